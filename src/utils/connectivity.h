#pragma once

#include <QString>

// The blocking test of whether the internet can be reached: a GET of the
// maker's web site, following redirects. Any answer with a body counts as
// online, whatever its status. The calling thread keeps serving its events
// through a nested loop while it waits.
namespace Connectivity {

bool internetConnection();
bool internetConnection(const QString& url);

} // namespace Connectivity
