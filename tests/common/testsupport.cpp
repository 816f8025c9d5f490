#include "testsupport.h"

namespace TestSupport {

QString sourceDir()
{
    return QStringLiteral(QUILLARD_SOURCE_DIR);
}

} // namespace TestSupport
