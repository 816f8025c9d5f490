#include "applicationsetup.h"

#include <QCoreApplication>

namespace ApplicationSetup {

void beforeApplication()
{
    QCoreApplication::setAttribute(Qt::AA_EnableHighDpiScaling, true);
    // Icons take their pictures drawn at twice the size on scaled screens.
    QCoreApplication::setAttribute(Qt::AA_UseHighDpiPixmaps, true);
    // The X11 platform otherwise loads the GL library and its driver at the
    // start, a fifth of the time to the first window; no window here uses GL.
    // A value set from outside (a user's work-around) stands.
    if (!qEnvironmentVariableIsSet("QT_XCB_GL_INTEGRATION"))
        qputenv("QT_XCB_GL_INTEGRATION", "none");
}

} // namespace ApplicationSetup
