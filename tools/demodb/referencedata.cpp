#include "referencedata.h"

#include "referenceids.h"
#include "tablewriter.h"

#include <QVariant>

namespace {

struct WarningText {
    const char* name;
    const char* descr;
    bool food;
    int parentIndex; // index in the list, -1 for none
};

// Index i has the id firstPictogramWarning + i.
const WarningText warningTexts[] = {
    {"Prowadzenie pojazdów",
     "Lek może upośledzać zdolność prowadzenia pojazdów i obsługiwania maszyn. Nie prowadzić pojazdów, "
     "jeśli wystąpią zawroty głowy lub senność.",
     false, -1},
    {"Alkohol", "Nie spożywać alkoholu w trakcie leczenia. Alkohol nasila działanie uspokajające i ryzyko działań "
                "niepożądanych.",
     true, -1},
    {"Alkohol – uszkodzenie wątroby",
     "Regularne picie alkoholu w trakcie stosowania leku zwiększa ryzyko uszkodzenia wątroby.", true, 1},
    {"Sok grejpfrutowy", "Nie popijać sokiem grejpfrutowym: zwiększa on stężenie leku we krwi.", true, -1},
    {"Produkty mleczne", "Nie przyjmować z mlekiem ani przetworami mlecznymi; zachować odstęp co najmniej 2 godzin.",
     true, -1},
    {"Przyjmować na czczo", "Przyjmować rano, na czczo, co najmniej 30 minut przed śniadaniem.", true, -1},
    {"Przyjmować z posiłkiem",
     "Przyjmować w trakcie posiłku lub bezpośrednio po nim, aby ograniczyć podrażnienie żołądka.", true, -1},
    {"Kawa i herbata", "Kofeina może nasilać działania niepożądane; ograniczyć picie kawy i mocnej herbaty.", true,
     -1},
    {"Pokarmy bogate w witaminę K",
     "Unikać nagłych zmian ilości spożywanych zielonych warzyw liściastych (szpinak, jarmuż, brokuły).", true, -1},
    {"Pokarmy bogate w tyraminę",
     "Unikać dojrzewających serów, wędzonych ryb i czerwonego wina: ryzyko gwałtownego wzrostu ciśnienia.", true,
     -1},
    {"Ciąża", "Stosować w ciąży tylko wtedy, gdy korzyść dla matki przewyższa ryzyko dla płodu.", false, -1},
    {"Ciąża – I trymestr", "Przeciwwskazany w pierwszym trymestrze ciąży.", false, 10},
    {"Ciąża – III trymestr",
     "Przeciwwskazany w trzecim trymestrze ciąży: ryzyko przedwczesnego zamknięcia przewodu tętniczego.", false, 10},
    {"Karmienie piersią", "Lek przenika do mleka kobiecego. Na czas leczenia należy przerwać karmienie piersią.",
     false, -1},
    {"Dzieci", "Nie stosować u dzieci poniżej 12 lat bez zalecenia lekarza.", false, -1},
    {"Osoby starsze", "U osób w podeszłym wieku zaleca się rozpoczynać leczenie od mniejszej dawki.", false, -1},
    {"Niewydolność nerek", "U pacjentów z niewydolnością nerek konieczne jest zmniejszenie dawki.", false, -1},
    {"Niewydolność wątroby", "Przeciwwskazany w ciężkiej niewydolności wątroby.", false, -1},
    {"Nadwrażliwość na światło",
     "Lek uwrażliwia skórę na światło słoneczne. Unikać słońca i solarium, stosować kremy z filtrem.", false, -1},
    {"Doping w sporcie", "Substancja znajduje się na liście substancji zabronionych w sporcie.", false, -1},
    {"Laktoza",
     "Lek zawiera laktozę. Nie stosować u pacjentów z rzadko występującą dziedziczną nietolerancją galaktozy.",
     false, -1},
    {"Sacharoza", "Lek zawiera sacharozę; należy to uwzględnić u pacjentów z cukrzycą.", false, -1},
    {"Sód", "Lek zawiera sód; należy to uwzględnić u pacjentów na diecie z ograniczeniem sodu.", false, -1},
    {"Senność", "Lek może powodować senność, szczególnie na początku leczenia.", false, -1},
    {"Zawroty głowy", "Możliwe zawroty głowy przy szybkiej zmianie pozycji ciała.", false, -1},
    {"Nie kruszyć", "Tabletek nie należy dzielić, kruszyć ani żuć.", false, -1},
    {"Popić dużą ilością wody", "Przyjmować w pozycji stojącej, popijając pełną szklanką wody.", false, -1},
    {"Ryzyko uzależnienia",
     "Długotrwałe stosowanie może prowadzić do uzależnienia. Nie przerywać leczenia nagle.", false, -1},
    {"Odstawienie stopniowe",
     "Dawkę należy zmniejszać stopniowo; nagłe odstawienie może wywołać objawy odstawienne.", false, -1},
    {"Krwawienia", "Lek zwiększa ryzyko krwawień. Poinformować lekarza lub dentystę przed zabiegiem.", false, -1},
    {"Leki przeciwzakrzepowe", "Może nasilać działanie leków przeciwzakrzepowych.", false, -1},
    {"Inne leki z paracetamolem", "Nie stosować jednocześnie z innymi lekami zawierającymi paracetamol.", false, -1},
    {"Inne NLPZ", "Nie stosować jednocześnie z innymi niesteroidowymi lekami przeciwzapalnymi.", false, -1},
    {"Wydłużenie odstępu QT",
     "Lek może wydłużać odstęp QT; ostrożnie u pacjentów z zaburzeniami rytmu serca.", false, -1},
    {"Hipoglikemia", "Ryzyko hipoglikemii; należy mieć przy sobie cukier lub słodki napój.", false, -1},
    {"Hiperkaliemia",
     "Może zwiększać stężenie potasu we krwi; unikać zamienników soli kuchennej zawierających potas.", false, -1},
    {"Kontrola ciśnienia", "Regularnie kontrolować ciśnienie tętnicze.", false, -1},
    {"Kontrola morfologii", "W trakcie leczenia należy okresowo kontrolować morfologię krwi.", false, -1},
    {"Kontrola INR", "Konieczna regularna kontrola wskaźnika INR.", false, -1},
    {"Temperatura przechowywania", "Przechowywać w temperaturze poniżej 25°C.", false, -1},
    {"Chronić przed światłem", "Przechowywać w oryginalnym opakowaniu w celu ochrony przed światłem.", false, -1},
    {"Pełna kuracja antybiotyku", "Stosować przez cały zalecony czas, także po ustąpieniu objawów.", false, -1},
    {"Probiotyk", "W trakcie antybiotykoterapii zaleca się stosowanie probiotyku.", false, -1},
    {"Antykoncepcja", "Lek może zmniejszać skuteczność doustnych środków antykoncepcyjnych.", false, -1},
    {"Soki owocowe",
     "Nie popijać sokami owocowymi (jabłkowym, pomarańczowym): zmniejszają wchłanianie leku.", true, -1},
    {"Posiłek bogatotłuszczowy",
     "Posiłek bogatotłuszczowy zwiększa wchłanianie; przyjmować zawsze w ten sam sposób względem posiłków.", true,
     -1},
    {"Lukrecja", "Unikać spożywania dużych ilości lukrecji: ryzyko hipokaliemii.", true, -1},
    {"Wapń i żelazo w diecie",
     "Preparaty wapnia, żelaza i magnezu przyjmować w odstępie co najmniej 2 godzin.", true, -1},
    {"Dziurawiec", "Nie stosować jednocześnie z preparatami dziurawca.", false, -1},
    {"Astma", "Może wywołać skurcz oskrzeli u osób z astmą.", false, -1},
    {"Jaskra", "Ostrożnie u pacjentów z jaskrą z wąskim kątem przesączania.", false, -1},
    {"Przerost prostaty", "Może utrudniać oddawanie moczu u mężczyzn z przerostem gruczołu krokowego.", false, -1},
    {"Padaczka", "Może obniżać próg drgawkowy.", false, -1},
    {"Myśli samobójcze", "Na początku leczenia obserwować pacjenta pod kątem myśli samobójczych.", false, -1},
    {"Zespół serotoninowy", "Nie łączyć z innymi lekami działającymi serotoninergicznie.", false, -1},
    {"Spadki ciśnienia", "Pierwszą dawkę przyjąć wieczorem, przed snem: ryzyko spadku ciśnienia po wstaniu.", false,
     -1},
    {"Reakcje skórne", "W razie wysypki przerwać leczenie i skontaktować się z lekarzem.", false, -1},
    {"Bóle mięśni", "Niewyjaśnione bóle mięśni należy niezwłocznie zgłosić lekarzowi.", false, -1},
    {"Kaszel", "Może wywoływać suchy, męczący kaszel.", false, -1},
    {"Obrzęki", "Możliwe obrzęki kostek, zwłaszcza na początku leczenia.", false, -1},
    {"Krwawienie z przewodu pokarmowego",
     "Ryzyko krwawienia z przewodu pokarmowego, zwłaszcza u osób starszych.", false, -1},
    {"Kontrola glikemii", "U pacjentów z cukrzycą kontrolować stężenie glukozy we krwi.", false, -1},
    {"Bezsenność", "Ostatnią dawkę przyjmować nie później niż 6 godzin przed snem.", false, -1},
    {"Zabarwienie moczu",
     "Lek może zabarwiać mocz na czerwono-pomarańczowo; nie ma to znaczenia klinicznego.", false, -1},
    {"Szczepienia", "W trakcie leczenia nie stosować szczepionek żywych.", false, -1},
    {"Zaburzenia widzenia", "Może powodować przejściowe niewyraźne widzenie.", false, -1},
    {"Suchość w ustach", "Może wywoływać suchość w jamie ustnej; dbać o higienę jamy ustnej.", false, -1},
};

const int warningCount = int(sizeof(warningTexts) / sizeof(warningTexts[0]));
static_assert(sizeof(warningTexts) / sizeof(warningTexts[0])
                  == ReferenceIds::lastPictogramWarning - ReferenceIds::firstPictogramWarning + 1,
              "one warning per pictogram");

const int grapefruitIndex = 3;

QString text(const char* utf8)
{
    return QString::fromUtf8(utf8);
}

} // namespace

void ReferenceData::write(TableWriter& writer)
{
    writeLevels(writer);
    writeScopes(writer);
    writeOffLabel(writer);
    writeStatuses(writer);
    writeForms(writer);
    writeWarnings(writer);
    writeGifKinds(writer);
}

QList<int> ReferenceData::specialWarningIds()
{
    QList<int> ids;
    for (int i = 0; i < warningCount; ++i) {
        if (!warningTexts[i].food)
            ids.append(ReferenceIds::firstPictogramWarning + i);
    }
    return ids;
}

QList<int> ReferenceData::foodWarningIds()
{
    QList<int> ids;
    for (int i = 0; i < warningCount; ++i) {
        if (warningTexts[i].food)
            ids.append(ReferenceIds::firstPictogramWarning + i);
    }
    return ids;
}

int ReferenceData::doubleListedFoodWarning()
{
    return ReferenceIds::firstPictogramWarning + grapefruitIndex;
}

void ReferenceData::writeLevels(TableWriter& writer)
{
    using namespace ReferenceIds;
    const QList<QVariantList> rows = {
        {fullPrice, QStringLiteral("100%"),
         QStringLiteral("Pełna odpłatność – lek wydawany za 100% ceny detalicznej, bez refundacji.")},
        {lumpSum, QStringLiteral("ryczałt"),
         QStringLiteral("Odpłatność ryczałtowa: pacjent płaci stałą kwotę za opakowanie, niezależnie od ceny "
                        "leku, powiększoną o ewentualną dopłatę do limitu finansowania.")},
        {thirtyPercent, QStringLiteral("30%"),
         QStringLiteral("Odpłatność 30% limitu finansowania, powiększona o różnicę między ceną detaliczną a "
                        "limitem.")},
        {fiftyPercent, QStringLiteral("50%"),
         QStringLiteral("Odpłatność 50% limitu finansowania, powiększona o różnicę między ceną detaliczną a "
                        "limitem.")},
        {freeOfCharge, QStringLiteral("bezpłatny"),
         QStringLiteral("Lek wydawany bezpłatnie do wysokości limitu finansowania. Pacjent dopłaca jedynie różnicę "
                        "między ceną detaliczną a limitem finansowania ze środków publicznych, jeśli cena leku "
                        "przekracza limit. Dotyczy leków stosowanych w chorobach przewlekłych i zakaźnych "
                        "wymienionych w wykazie.")},
        {senior, QStringLiteral("S"),
         QStringLiteral("Bezpłatnie dla świadczeniobiorców, którzy ukończyli 65. rok życia, na receptę "
                        "wystawioną przez uprawnioną osobę, do wysokości limitu finansowania.")},
        {children, QStringLiteral("DZ"),
         QStringLiteral("Bezpłatnie dla świadczeniobiorców do ukończenia 18. roku życia, do wysokości limitu "
                        "finansowania.")},
        {pregnancy, QStringLiteral("C"),
         QStringLiteral("Bezpłatnie dla świadczeniobiorczyń w okresie ciąży, do wysokości limitu "
                        "finansowania.")},
    };
    for (const QVariantList& row : rows)
        writer.insert(QStringLiteral("xs"), row);
}

void ReferenceData::writeScopes(TableWriter& writer)
{
    using namespace ReferenceIds;
    const QList<QPair<int, const char*>> names = {
        {scopeCancerPain, "Ból o nasileniu umiarkowanym do silnego w przebiegu choroby nowotworowej"},
        {scopeHypertension, "Nadciśnienie tętnicze"},
        {scopeHeartFailure, "Przewlekła niewydolność serca"},
        {scopeDiabetes, "Cukrzyca typu 2"},
        {scopeInfections, "Zakażenia bakteryjne dróg oddechowych, moczowych oraz skóry i tkanek miękkich"},
        {scopeUlcer, "Choroba wrzodowa żołądka i dwunastnicy; choroba refluksowa przełyku"},
        {scopeEpilepsy, "Padaczka"},
        {scopeDepression, "Depresja; zaburzenia lękowe"},
        {scopeAsthma, "Astma oskrzelowa; przewlekła obturacyjna choroba płuc"},
        {scopeCholesterol, "Hipercholesterolemia; hiperlipidemia mieszana"},
        {scopeThrombosis, "Zapobieganie powikłaniom zakrzepowo-zatorowym"},
        {scopeThyroid, "Niedoczynność tarczycy"},
        {scopeChemotherapy, "Chemioterapia - nowotwory złośliwe"},
        {scopeProgrammeHepatitis,
         "Program lekowy B.12 - Leczenie chorych na przewlekłe wirusowe zapalenie wątroby typu B"},
        {scopeProgrammeArthritis,
         "Program lekowy B.33 - Leczenie chorych z aktywną postacią reumatoidalnego zapalenia stawów"},
        {scopeChemotherapySupport, "Chemioterapia - leczenie wspomagające w chorobie nowotworowej"},
        {scopeSchizophrenia, "Schizofrenia; zaburzenia afektywne dwubiegunowe"},
        {scopeParkinson, "Choroba Parkinsona"},
        {scopePsoriasis, "Łuszczyca; atopowe zapalenie skóry"},
        {scopeGout, "Dna moczanowa; hiperurykemia"},
        {scopeOsteoporosis, "Osteoporoza pomenopauzalna"},
        {scopeGlaucoma, "Jaskra; nadciśnienie wewnątrzgałkowe"},
        {scopeAllergy, "Alergiczny nieżyt nosa; przewlekła pokrzywka idiopatyczna"},
        {scopeDementia, "Otępienie typu alzheimerowskiego"},
        {scopeUrology, "Łagodny rozrost gruczołu krokowego; pęcherz nadreaktywny"},
        {scopePain, "Bóle przewlekłe w chorobach zwyrodnieniowych stawów"},
        {scopeProgrammeChemotherapy,
         "Program lekowy B.4 - Leczenie chorych na raka jelita grubego: chemioterapia z udziałem irynotekanu"},
    };
    for (const auto& scope : names) {
        // A programme's attachment is its scope's file; chemotherapy takes its
        // file from the off-label text instead.
        QString descr;
        if (scope.first == scopeProgrammeHepatitis)
            descr = QStringLiteral("B.12.pdf");
        else if (scope.first == scopeProgrammeArthritis)
            descr = QStringLiteral("B.33.pdf");
        else if (scope.first == scopeProgrammeChemotherapy)
            descr = QStringLiteral("B.4.pdf");
        writer.insert(QStringLiteral("d"), {scope.first, text(scope.second), descr});
    }
}

void ReferenceData::writeOffLabel(TableWriter& writer)
{
    using namespace ReferenceIds;
    const QList<QPair<int, const char*>> texts = {
        {offLabelNoData, "Brak danych"},
        {offLabelNone, "Brak wskazań"},
        {offLabelCancerCare,
         "Zapobieganie nudnościom i wymiotom u pacjentów poddawanych chemioterapii; ból przebijający u pacjentów z "
         "chorobą nowotworową"},
        {offLabelChemoFileC13, "C.13.pdf"},
        {offLabelChemoFileC34, "C.34.pdf"},
        {offLabelTransplant, "Profilaktyka zakażeń u pacjentów po przeszczepieniu narządów unaczynionych"},
        {offLabelNeuropathic, "Ból neuropatyczny u pacjentów z chorobą nowotworową; neuralgia po półpaścu"},
    };
    for (const auto& entry : texts)
        writer.insert(QStringLiteral("x"), {entry.first, text(entry.second)});
}

void ReferenceData::writeStatuses(TableWriter& writer)
{
    using namespace ReferenceIds;
    writer.insert(QStringLiteral("xp"), {statusPrescription, QStringLiteral("Rp – lek wydawany na receptę")});
    writer.insert(QStringLiteral("xp"), {statusOverTheCounter, QStringLiteral("OTC – lek bez recepty")});
    writer.insert(QStringLiteral("xp"), {statusRestricted, QStringLiteral("Rpz – do zastrzeżonego stosowania")});
    writer.insert(QStringLiteral("xp"), {statusNarcotic, QStringLiteral("Rpw – zawiera środki odurzające")});
    writer.insert(QStringLiteral("xp"), {statusHospital, QStringLiteral("Lz – lecznictwo zamknięte")});
}

void ReferenceData::writeForms(TableWriter& writer)
{
    // Forms of one class may replace each other; forms of no class match only
    // themselves.
    const QList<QStringList> classes = {
        {QStringLiteral("tabl."), QStringLiteral("tabl. powl."), QStringLiteral("tabl. podzielne")},
        {QStringLiteral("kaps."), QStringLiteral("kaps. twarde"), QStringLiteral("kaps. miękkie")},
        {QStringLiteral("tabl. o przedł. uwalnianiu"), QStringLiteral("tabl. powl. o przedł. uwalnianiu"),
         QStringLiteral("kaps. o przedł. uwalnianiu")},
        {QStringLiteral("tabl. dojel."), QStringLiteral("kaps. dojel."), QStringLiteral("kaps. twarde dojel.")},
        {QStringLiteral("syrop"), QStringLiteral("roztwór doustny")},
        {QStringLiteral("zawiesina doustna"), QStringLiteral("granulat do sporz. zawiesiny doustnej"),
         QStringLiteral("proszek do sporz. zawiesiny doustnej")},
        {QStringLiteral("tabl. musujące"), QStringLiteral("granulat musujący")},
        {QStringLiteral("tabl. ulegające rozpadowi w jamie ustnej"), QStringLiteral("liofilizat doustny")},
    };
    for (int i = 0; i < classes.size(); ++i) {
        for (const QString& form : classes.at(i))
            writer.insert(QStringLiteral("postac_match"), {form, i + 1});
    }
}

void ReferenceData::writeWarnings(TableWriter& writer)
{
    using namespace ReferenceIds;
    for (int i = 0; i < warningCount; ++i) {
        const WarningText& warning = warningTexts[i];
        const QVariant parent = warning.parentIndex < 0 ? QVariant()
                                                        : QVariant(firstPictogramWarning + warning.parentIndex);
        writer.insert(QStringLiteral("w"),
                      {firstPictogramWarning + i, parent, text(warning.name), text(warning.descr)});
        if (warning.food)
            writer.insert(QStringLiteral("food"), {firstPictogramWarning + i});
    }
    writer.insert(QStringLiteral("food"), {doubleListedFoodWarning()});

    writer.insert(QStringLiteral("w"),
                  {warningNoPictogramChildren, QVariant(), QStringLiteral("Nie stosować u dzieci poniżej 6 lat"),
                   QStringLiteral("Ze względu na zawartość substancji czynnej lek nie jest przeznaczony dla dzieci "
                                  "poniżej 6. roku życia.")});
    writer.insert(QStringLiteral("w"),
                  {warningNoPictogramFridge, warningNoPictogramChildren, QStringLiteral("Przechowywać w lodówce"),
                   QStringLiteral("Przechowywać w lodówce (2°C – 8°C). Nie zamrażać. Po otwarciu zużyć w ciągu "
                                  "28 dni.")});
}

void ReferenceData::writeGifKinds(TableWriter& writer)
{
    using namespace ReferenceIds;
    writer.insert(QStringLiteral("gk"),
                  {gifWithdrawal, QStringLiteral("Wycofanie z obrotu"),
                   QStringLiteral("DECYZJA O WYCOFANIU Z OBROTU NA TERENIE CAŁEGO KRAJU SERII PRODUKTU "
                                  "LECZNICZEGO")});
    writer.insert(QStringLiteral("gk"),
                  {gifSuspension, QStringLiteral("Wstrzymanie w obrocie"),
                   QStringLiteral("DECYZJA O WSTRZYMANIU W OBROCIE NA TERENIE CAŁEGO KRAJU SERII PRODUKTU "
                                  "LECZNICZEGO")});
    writer.insert(QStringLiteral("gk"),
                  {gifResumption, QStringLiteral("Uchylenie decyzji"),
                   QStringLiteral("Decyzja uchylająca wstrzymanie w obrocie serii produktu leczniczego")});
}
