#pragma once

#include <QString>

#include <memory>

class SearchIndex;

// The search index of the opened drug database: built once per opening on a
// worker thread with a connection of its own, while the search statement goes
// on serving, and dropped when the database closes so that its file can be
// replaced. Called from the main thread; elsewhere there is no index.
namespace SearchIndexLoader {

// Starts building from `statement` (see SearchIndex::build) unless an index
// is there or on its way.
void start(const QString& statement);
// The finished index, or null while it is built or when it couldn't be.
std::shared_ptr<const SearchIndex> current();
// Stops a build on its way, waits for its connection to close, drops the index.
void drop();
// Waits for a build on its way; whether an index is there then.
bool waitUntilReady();

} // namespace SearchIndexLoader
