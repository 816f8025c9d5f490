#pragma once

class TableWriter;

// The banners that come with the data: a still one leading to a web page, an
// animated one leading to a drug group, a still one leading nowhere, and rows
// that the banner code has to survive.
class AdvertWriter {
public:
    static void write(TableWriter& writer);

    // Ids of the banners that don't show a picture or don't lead anywhere.
    static const int unknownTypeBanner = 4;
    static const int emptyBanner = 5; // xvalue ''
    static const int nullBanner = 6; // xvalue NULL
    static const int missingGroupBanner = 8;
};
