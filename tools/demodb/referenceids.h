#pragma once

// Keys of the reference tables that the drug rows point at.
namespace ReferenceIds {

// xs: payment levels
constexpr int fullPrice = 1;
constexpr int lumpSum = 2;
constexpr int thirtyPercent = 3;
constexpr int fiftyPercent = 4;
constexpr int freeOfCharge = 5;
constexpr int senior = 9;
constexpr int children = 10;
constexpr int pregnancy = 11;

// d: refund scopes; the first ones are those of the substance table
constexpr int scopeCancerPain = 1;
constexpr int scopeHypertension = 2;
constexpr int scopeHeartFailure = 3;
constexpr int scopeDiabetes = 4;
constexpr int scopeInfections = 5;
constexpr int scopeUlcer = 6;
constexpr int scopeEpilepsy = 7;
constexpr int scopeDepression = 8;
constexpr int scopeAsthma = 9;
constexpr int scopeCholesterol = 10;
constexpr int scopeThrombosis = 11;
constexpr int scopeThyroid = 12;
constexpr int scopeChemotherapy = 13;
constexpr int scopeProgrammeHepatitis = 14;
constexpr int scopeProgrammeArthritis = 15;
constexpr int scopeChemotherapySupport = 16;
constexpr int scopeSchizophrenia = 17;
constexpr int scopeParkinson = 18;
constexpr int scopePsoriasis = 19;
constexpr int scopeGout = 20;
constexpr int scopeOsteoporosis = 21;
constexpr int scopeGlaucoma = 22;
constexpr int scopeAllergy = 23;
constexpr int scopeDementia = 24;
constexpr int scopeUrology = 25;
constexpr int scopePain = 26;
constexpr int scopeProgrammeChemotherapy = 27; // both words: the programme's file wins

// x: off-label indications
constexpr int offLabelNoData = 1;      // "Brak danych"
constexpr int offLabelNone = 2;        // "Brak wskazań"
constexpr int offLabelCancerCare = 3;
constexpr int offLabelChemoFileC13 = 4; // a chemotherapy attachment file name
constexpr int offLabelChemoFileC34 = 5;
constexpr int offLabelTransplant = 6;
constexpr int offLabelNeuropathic = 7;

// xp: package status
constexpr int statusPrescription = 1;
constexpr int statusOverTheCounter = 2;
constexpr int statusRestricted = 3;
constexpr int statusNarcotic = 4;
constexpr int statusHospital = 5;

// w: warnings with a pictogram take ids from this range; two without one
constexpr int firstPictogramWarning = 14478650;
constexpr int lastPictogramWarning = 14478716;
constexpr int warningNoPictogramChildren = 99000001;
constexpr int warningNoPictogramFridge = 99000002;

// gk: kinds of GIF decision
constexpr int gifWithdrawal = 1;
constexpr int gifSuspension = 2;
constexpr int gifResumption = 3;

} // namespace ReferenceIds
