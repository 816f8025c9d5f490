#pragma once

class DemoRandom;
class TableWriter;

// Pharmacies with their contact data and opening hours, for the pharmacy
// look-up; the seven day types come first. Generated pharmacies take the ids
// 1 to count.
class PharmacyWriter {
public:
    static void write(TableWriter& writer, DemoRandom& random, int count);

    // A pharmacy of its own town, Kórnik, with no opening hours at all.
    static const int pharmacyWithoutHours = 9001;
};
