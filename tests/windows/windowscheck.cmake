# cmake -DSETTINGS=<windowscheck-CONFIG.txt> -P windowscheck.cmake
#
# Runs MinGW-w64 with -fsyntax-only over each file of the Windows build, prints
# what the compiler says and fails if any file does not compile. The settings
# file is written by tests/windows/CMakeLists.txt.

cmake_minimum_required(VERSION 3.16)

find_program(compiler NAMES x86_64-w64-mingw32-g++-posix x86_64-w64-mingw32-g++)
if(NOT compiler)
    message("Windows compile check skipped: x86_64-w64-mingw32-g++ is not installed "
            "(scripts/install-deps.sh installs g++-mingw-w64-x86-64-posix)")
    return()
endif()

file(STRINGS "${SETTINGS}" lines)
foreach(kind root source include hostinclude skipinclude define option)
    set(${kind}s "")
endforeach()
foreach(line IN LISTS lines)
    if(line MATCHES "^([a-z]+):(.+)$")
        list(APPEND ${CMAKE_MATCH_1}s "${CMAKE_MATCH_2}")
    endif()
endforeach()

# WIN32 as both CMake's MSVC flags and GNU-mode MinGW define it; UNICODE so that
# the Windows API's generic names take wide strings, as in a qmake-built Qt program.
set(flags -fsyntax-only -std=c++17 -fdiagnostics-color=never -DWIN32 -DUNICODE -D_UNICODE)
# Only the warning settings: code generation options (sanitizers, PIC) belong to
# the host build.
foreach(option IN LISTS options)
    if(option MATCHES "^-W")
        list(APPEND flags "${option}")
    endif()
endforeach()
foreach(define IN LISTS defines)
    list(APPEND flags "-D${define}")
endforeach()

set(dirs "")
foreach(dir IN LISTS includes)
    get_filename_component(dir "${dir}" ABSOLUTE)
    list(APPEND dirs "${dir}")
endforeach()
list(REMOVE_DUPLICATES dirs)
foreach(dir IN LISTS dirs)
    # The host compiler's own folders would shadow MinGW's C and C++ libraries.
    if(dir IN_LIST skipincludes)
        continue()
    endif()
    # Qt's platform folder: qplatformdefs.h of the Windows build, not Linux's.
    get_filename_component(parent "${dir}" DIRECTORY)
    get_filename_component(parentName "${parent}" NAME)
    if(parentName STREQUAL "mkspecs")
        set(dir "${parent}/win32-g++")
        if(NOT EXISTS "${dir}")
            continue()
        endif()
    endif()
    # Warnings count in our code only, as in the host build.
    set(ours FALSE)
    foreach(root IN LISTS roots)
        string(FIND "${dir}/" "${root}/" at)
        if(at EQUAL 0)
            set(ours TRUE)
        endif()
    endforeach()
    if(ours)
        list(APPEND flags "-I${dir}")
    else()
        list(APPEND flags -isystem "${dir}")
    endif()
endforeach()
foreach(dir IN LISTS hostincludes)
    list(APPEND flags -isystem "${dir}")
endforeach()

list(LENGTH sources total)
if(total EQUAL 0)
    message(FATAL_ERROR "Windows compile check: no source files in ${SETTINGS}")
endif()
list(GET roots 0 sourceRoot)
set(failed "")
foreach(source IN LISTS sources)
    execute_process(COMMAND "${compiler}" ${flags} "${source}"
        RESULT_VARIABLE result
        OUTPUT_VARIABLE output
        ERROR_VARIABLE output)
    file(RELATIVE_PATH name "${sourceRoot}" "${source}")
    if(NOT result EQUAL 0)
        list(APPEND failed "${name}")
        message("${name}: does not compile for Windows\n${output}")
    elseif(output)
        message("${name}:\n${output}")
    endif()
endforeach()

if(failed)
    list(LENGTH failed failedCount)
    list(JOIN failed "\n  " failedList)
    message(FATAL_ERROR "${failedCount} of ${total} files do not compile for Windows:\n  ${failedList}")
endif()
message("Windows compile check: ${total} files compile with ${compiler}")
