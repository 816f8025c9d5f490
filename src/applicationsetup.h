#pragma once

// What the program sets before its QApplication exists: high-DPI scaling and
// pictures, and no OpenGL on X11, which none of its windows draws with.
namespace ApplicationSetup {

void beforeApplication();

} // namespace ApplicationSetup
