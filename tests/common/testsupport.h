#pragma once

#include <QString>

// Helpers shared by the tests.
namespace TestSupport {

// The source tree, for fixtures kept beside the tests.
QString sourceDir();

} // namespace TestSupport
