#pragma once

class DemoRandom;
class TableWriter;

// Pharmacies with their contact data and opening hours, for the pharmacy
// look-up; the seven day types come first.
class PharmacyWriter {
public:
    static void write(TableWriter& writer, DemoRandom& random, int count);
};
