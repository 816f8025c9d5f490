#pragma once

class TableWriter;

// The banners that come with the data: a still one leading to a web page, an
// animated one leading to a drug group, and a still one leading nowhere.
class AdvertWriter {
public:
    static void write(TableWriter& writer, int drugGroup);
};
