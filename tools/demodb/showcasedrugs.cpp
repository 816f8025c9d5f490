#include "showcasedrugs.h"

#include "demorandom.h"
#include "descriptiontexts.h"
#include "drugcatalogue.h"
#include "referenceids.h"

namespace {

using namespace ReferenceIds;

const QString demofarm = QStringLiteral("Demofarm Sp. z o.o.");
const QString medivia = QStringLiteral("Medivia Demo S.A.");
const QString polvita = QStringLiteral("Polvita Demo Sp. z o.o.");
const QString baltyk = QStringLiteral("Bałtyk Farmacja Demo Sp. z o.o.");
const QString vistula = QStringLiteral("Vistula Generics Demo Sp. z o.o.");
const QString kwiatpharm = QStringLiteral("Kwiatpharm Demo Sp. j.");
const QString essai = QStringLiteral("Laboratoires d'Essai Demo");

QString leaflet(int vid)
{
    return QStringLiteral("ulotki\\") + QString::number(vid) + QStringLiteral(".pdf");
}

QString warnings(std::initializer_list<int> ids)
{
    QStringList list;
    for (int id : ids)
        list.append(QString::number(id));
    return list.join(QLatin1Char(','));
}

int warning(int index)
{
    return firstPictogramWarning + index;
}

// The sections of a group: all titles, or a fixed pick of them.
void describe(DrugCatalogue& catalogue, int gid, const QString& substance, const QString& dose, int every)
{
    DemoRandom random(gid);
    const QStringList& titles = DescriptionTexts::titles();
    for (int i = 0; i < titles.size(); i += every)
        catalogue.addDescription(gid, titles.at(i), DescriptionTexts::section(titles.at(i), substance, dose, random));
}

// Another maker's package of the drug in p, with its own prices and code.
void addVariant(DrugCatalogue& catalogue, DrugCatalogue::Package p, int vid, const QString& name,
                const QString& company, const QString& prices, int serial)
{
    p.vid = vid;
    p.name = name;
    p.company = company;
    p.prices = prices;
    p.leaflet = leaflet(vid);
    p.eans = QStringList{ShowcaseDrugs::code(serial)};
    catalogue.addPackage(p);
}

} // namespace

QString ShowcaseDrugs::code(int serial)
{
    return DrugCatalogue::ean13(QLatin1String("590999") + QString::number(serial).rightJustified(6, QLatin1Char('0')));
}

const QList<ShowcaseDrugs::Fact>& ShowcaseDrugs::facts()
{
    static const QList<Fact> all = {
        {code(1), QStringLiteral("100001"),
         QStringLiteral("Paracetamol Demofarm 500 mg tabl.: 3 EAN codes (%1, %2, %3); 3 substitutes in price order "
                        "100002 (4,49), 100004 (7.80), 100003 (x); 2 GIF decisions, newest 2025-03-14 with a "
                        "back-slash path; all 18 description sections; 7 warning rows: 3 special (99000001 without a "
                        "pictogram) and 4 food (alcohol, its child 14478652, grapefruit twice since food lists it "
                        "twice); refund rows full price and ryczałt 3,20 with an off-label text")
             .arg(code(1), code(2), code(3))},
        {code(10), QStringLiteral("100002"),
         QStringLiteral("Dolaceta 500 mg tabl. powl.: substitutes 100001, 100003, 100004; leaflet path with '/'")},
        {code(11), QStringLiteral("100003"),
         QStringLiteral("Febrisan Demo 500 mg tabl.: full price \"x\" (bd.), no leaflet")},
        {code(13), QStringLiteral("100007"),
         QStringLiteral("Paracetamol Kwiatpharm \"500mg\": same group as 100001, no substitute (dose without a blank)")},
        {code(14), QStringLiteral("100005"),
         QStringLiteral("Paracetamol Demofarm Forte 1 g: only package of its group, no substitutes")},
        {code(20), QStringLiteral("100010"),
         QStringLiteral("Ibuprofen Demofarm 200 mg: empty prices, no substitutes; pregnancy warning with a child")},
        {code(30), QStringLiteral("100020"),
         QStringLiteral("Klavoxan 875 mg + 125 mg: two substances, one substitute (100021), one GIF decision")},
        {code(40), QStringLiteral("100030"),
         QStringLiteral("Gripoflu Max Demo: compound preparation (Prep. złoż.), no substitutes although 100031 is "
                        "its twin")},
        {code(50), QStringLiteral("100040"),
         QStringLiteral("Sirop d'Anis Demo: a quote in the name and the company")},
        {code(51), QStringLiteral("100041"),
         QStringLiteral("Miętówka Żołądkowa Demo: Polish letters in the name")},
        {code(60), QStringLiteral("100050"),
         QStringLiteral("Tenofowir Demofarm: programme scope, attachment B.12.pdf; 3 GIF decisions")},
        {code(61), QStringLiteral("100051"),
         QStringLiteral("Kapecytabina Demofarm: chemotherapy scope, attachment C.13.pdf from the off-label text; "
                        "substitute 100052")},
        {code(63), QStringLiteral("100053"),
         QStringLiteral("Etanercept Demo: programme scope with off-label \"Brak danych\" (no link); warning "
                        "99000002 with parent 99000001")},
        {code(64), QStringLiteral("100054"),
         QStringLiteral("Deksametazon Demofarm: refund rows with off-label texts")},
        {code(70), QStringLiteral("100060"),
         QStringLiteral("Febuksostat Demofarm: payments \" \", \"X\", \"-\" and empty; substitutes 100061, 100062")},
        {code(71), QStringLiteral("100061"),
         QStringLiteral("Febuksostat Medivia: levels 9 and 10, payments \"bezpłatnie\" and \"bez - dopłaty\"")},
        {code(80), QStringLiteral("100070"),
         QStringLiteral("Nitrogliceryna Demofarm: no description, no warnings, no leaflet, no GIF decision, "
                        "indications id -1")},
        {code(81), QStringLiteral("100071"),
         QStringLiteral("Żelaza siarczan Demofarm: only food warnings")},
        {code(90), QStringLiteral("100080"),
         QStringLiteral("Tikagrelor Demofarm: no full-price row; substitutes 100081 (ryczałt 3,50 zł), 100082 (30% "
                        "12.00 zł), then 100083 (X: bd.) and 100084 (levels 9 and 10: DZ bezpłatnie zł) in any "
                        "order")},
        {code(100), QStringLiteral("100085"),
         QStringLiteral("Lerkanidypina Demofarm: substitute 100086, which has one more substance and no "
                        "substitute itself")},
        {code(110), QString::number(packageWithoutGroup),
         QStringLiteral("Cylostazol Demofarm: its group %1 is not in g, so scanning shows nothing").arg(missingGroup)},
        {code(111), QString::number(vidWithoutPackage),
         QStringLiteral("an EAN code of a package that v doesn't hold: scanning shows nothing")},
        {code(120), QStringLiteral("100089"),
         QStringLiteral("Irynotekan Demofarm: scope naming both \"program lekowy\" and \"chemioterapia\": "
                        "attachment B.4.pdf from the scope, not C.13.pdf from the off-label text")},
        {code(130), QStringLiteral("100090"),
         QStringLiteral("Nitrendypina Demofarm: one row, level \"100%\" (id 1) with a named scope; substitute "
                        "100091")},
        {code(131), QStringLiteral("100091"),
         QStringLiteral("Nitrendypina Medivia: two \"100%\" rows (21,00 then 19,60); substitute 100090")},
        {code(140), QStringLiteral("100092"),
         QStringLiteral("Chlortalidon Demofarm: prices, leaflet and warns NULL, read like the empty texts of "
                        "100010 and 100070")},
    };
    return all;
}

void ShowcaseDrugs::write(DrugCatalogue& catalogue)
{
    using Package = DrugCatalogue::Package;

    // Paracetamol 500 mg tablets: one group, three substitutes of 100001.
    const int paracetamolIndication = catalogue.addIndication(
        QStringLiteral("<p>Ból o nasileniu łagodnym do umiarkowanego: ból głowy, zębów, mięśni, bolesne "
                       "miesiączkowanie.</p><p>Gorączka.</p>"),
        1);
    catalogue.addGroup(QStringLiteral("Paracetamol"), paracetamolGroup);
    describe(catalogue, paracetamolGroup, QStringLiteral("paracetamol"), QStringLiteral("500 mg"), 1);

    Package p;
    p.vid = 100001;
    p.name = QStringLiteral("Paracetamol Demofarm");
    p.status = statusOverTheCounter;
    p.gid = paracetamolGroup;
    p.kind = QStringLiteral("tabl.");
    p.dose = QStringLiteral("500 mg");
    p.box = QStringLiteral("50 szt.");
    p.company = demofarm;
    p.prices = QStringLiteral("-1|9,99|-1|-1|2|3,20|1|3");
    p.iid = paracetamolIndication;
    p.leaflet = leaflet(p.vid);
    p.warns = warnings({warning(0), warning(1), warning(2), warning(3), warning(31), warningNoPictogramChildren});
    p.substances = QStringList{QStringLiteral("Paracetamol")};
    p.eans = QStringList{code(1), code(2), code(3)};
    catalogue.addPackage(p);
    catalogue.addGifDecision(100001, gifSuspension, QStringLiteral("2024-11-02"),
                             QStringLiteral("gif/2024/decyzja_88.pdf"));
    catalogue.addGifDecision(100001, gifWithdrawal, QStringLiteral("2025-03-14"),
                             QStringLiteral("gif\\2025\\decyzja_123.pdf"));

    p.vid = 100002;
    p.name = QStringLiteral("Dolaceta");
    p.kind = QStringLiteral("tabl. powl.");
    p.box = QStringLiteral("20 szt.");
    p.company = medivia;
    p.prices = QStringLiteral("-1|4,49|-1|-1");
    p.leaflet = QStringLiteral("ulotki/100002.pdf");
    p.warns = warnings({warning(0), warning(31)});
    p.eans = QStringList{code(10)};
    catalogue.addPackage(p);

    p.vid = 100003;
    p.name = QStringLiteral("Febrisan Demo");
    p.kind = QStringLiteral("tabl.");
    p.box = QStringLiteral("10 szt.");
    p.company = polvita;
    p.prices = QStringLiteral("-1|x|-1|-1");
    p.leaflet.clear();
    p.eans = QStringList{code(11)};
    catalogue.addPackage(p);

    p.vid = 100004;
    p.name = QStringLiteral("Paracetamol Medivia");
    p.kind = QStringLiteral("tabl. powl.");
    p.box = QStringLiteral("50 szt.");
    p.company = medivia;
    p.prices = QStringLiteral("-1|7.80|-1|-1");
    p.leaflet = leaflet(p.vid);
    p.eans = QStringList{code(12)};
    catalogue.addPackage(p);

    p.vid = 100007;
    p.name = QStringLiteral("Paracetamol Kwiatpharm");
    p.kind = QStringLiteral("tabl.");
    p.dose = QStringLiteral("500mg");
    p.box = QStringLiteral("24 szt.");
    p.company = kwiatpharm;
    p.prices = QStringLiteral("-1|5,10|-1|-1");
    p.leaflet = leaflet(p.vid);
    p.eans = QStringList{code(13)};
    catalogue.addPackage(p);

    const int paracetamolForte = catalogue.addGroup(QStringLiteral("Paracetamol"), 2);
    describe(catalogue, paracetamolForte, QStringLiteral("paracetamol"), QStringLiteral("1 g"), 3);
    p.vid = 100005;
    p.name = QStringLiteral("Paracetamol Demofarm Forte");
    p.gid = paracetamolForte;
    p.dose = QStringLiteral("1 g");
    p.box = QStringLiteral("10 szt.");
    p.company = demofarm;
    p.prices = QStringLiteral("-1|8,40|-1|-1");
    p.leaflet = leaflet(p.vid);
    p.eans = QStringList{code(14)};
    catalogue.addPackage(p);

    const int paracetamolSuppositories = catalogue.addGroup(QStringLiteral("Paracetamol"), 3);
    p.vid = 100006;
    p.name = QStringLiteral("Dolaceta");
    p.gid = paracetamolSuppositories;
    p.kind = QStringLiteral("czopki");
    p.dose = QStringLiteral("500 mg");
    p.box = QStringLiteral("10 szt.");
    p.company = medivia;
    p.prices = QStringLiteral("-1|11,30|-1|-1");
    p.leaflet = leaflet(p.vid);
    p.eans = QStringList{code(15)};
    catalogue.addPackage(p);

    // Ibuprofen: an empty price text gives no substitutes.
    const int ibuprofenIndication = catalogue.addIndication(
        QStringLiteral("<p>Bóle różnego pochodzenia o nasileniu słabym do umiarkowanego. Gorączka. Bolesne "
                       "miesiączkowanie.</p>"),
        2);
    const int ibuprofen = catalogue.addGroup(QStringLiteral("Ibuprofen"), 4);
    describe(catalogue, ibuprofen, QStringLiteral("ibuprofen"), QStringLiteral("200 mg"), 2);
    p = Package();
    p.vid = 100010;
    p.name = QStringLiteral("Ibuprofen Demofarm");
    p.status = statusOverTheCounter;
    p.gid = ibuprofen;
    p.kind = QStringLiteral("tabl. powl.");
    p.dose = QStringLiteral("200 mg");
    p.box = QStringLiteral("24 szt.");
    p.company = demofarm;
    p.iid = ibuprofenIndication;
    p.leaflet = leaflet(p.vid);
    p.warns = warnings({warning(10), warning(12), warning(32), warning(6)});
    p.substances = QStringList{QStringLiteral("Ibuprofen")};
    p.eans = QStringList{code(20)};
    catalogue.addPackage(p);

    p.vid = 100011;
    p.name = QStringLiteral("Bolifen Demo");
    p.company = vistula;
    p.prices = QStringLiteral("-1|6,50|-1|-1");
    p.eans = QStringList{code(21)};
    p.leaflet = leaflet(p.vid);
    catalogue.addPackage(p);

    // Two substances in one package.
    const int clavIndication = catalogue.addIndication(
        QStringLiteral("<p>Zakażenia bakteryjne: ostre zapalenie zatok, zapalenie ucha środkowego, zaostrzenie "
                       "przewlekłego zapalenia oskrzeli, pozaszpitalne zapalenie płuc, zakażenia dróg "
                       "moczowych.</p>"),
        3);
    const int clav = catalogue.addGroup(QStringLiteral("Amoksycylina + kwas klawulanowy"), 5);
    describe(catalogue, clav, QStringLiteral("amoksycylina z kwasem klawulanowym"), QStringLiteral("875 mg + 125 mg"),
             2);
    p = Package();
    p.vid = 100020;
    p.name = QStringLiteral("Klavoxan");
    p.status = statusPrescription;
    p.gid = clav;
    p.kind = QStringLiteral("tabl. powl.");
    p.dose = QStringLiteral("875 mg + 125 mg");
    p.box = QStringLiteral("14 szt.");
    p.company = baltyk;
    p.prices = QStringLiteral("-1|38,90|-1|-1|4|19,45|5|2");
    p.iid = clavIndication;
    p.leaflet = leaflet(p.vid);
    p.warns = warnings({warning(41), warning(42), warning(43), warning(56)});
    p.substances = QStringList{QStringLiteral("Amoksycylina"), QStringLiteral("Kwas klawulanowy")};
    p.eans = QStringList{code(30)};
    catalogue.addPackage(p);
    catalogue.addGifDecision(100020, gifWithdrawal, QStringLiteral("2025-06-30"),
                             QStringLiteral("gif\\2025\\decyzja_301.pdf"));

    p.vid = 100021;
    p.name = QStringLiteral("Amoksycylina z kwasem klawulanowym Bałtyk");
    p.kind = QStringLiteral("tabl.");
    p.prices = QStringLiteral("-1|29,99|-1|-1|4|14,20|5|2");
    p.leaflet = leaflet(p.vid);
    p.eans = QStringList{code(31)};
    catalogue.addPackage(p);

    const int amoxicillin = catalogue.addGroup(QStringLiteral("Amoksycylina"), 6);
    describe(catalogue, amoxicillin, QStringLiteral("amoksycylina"), QStringLiteral("500 mg"), 4);
    p.vid = 100022;
    p.name = QStringLiteral("Amoksycylina Demofarm");
    p.gid = amoxicillin;
    p.kind = QStringLiteral("kaps.");
    p.dose = QStringLiteral("500 mg");
    p.box = QStringLiteral("16 szt.");
    p.company = demofarm;
    p.prices = QStringLiteral("-1|14,60|-1|-1|4|7,30|5|2");
    p.leaflet = leaflet(p.vid);
    p.substances = QStringList{QStringLiteral("Amoksycylina")};
    p.eans = QStringList{code(32)};
    catalogue.addPackage(p);

    p.vid = 100023;
    p.name = QStringLiteral("Amoksycylina Vistula");
    p.kind = QStringLiteral("kaps. twarde");
    p.company = vistula;
    p.prices = QStringLiteral("-1|12,95|-1|-1|4|6,10|5|2");
    p.leaflet = leaflet(p.vid);
    p.eans = QStringList{code(33)};
    catalogue.addPackage(p);

    // A compound preparation and its twin: still no substitutes.
    const int compound = catalogue.addGroup(QStringLiteral("Prep. złoż."), 7);
    describe(catalogue, compound, QStringLiteral("preparat złożony"), QStringLiteral("1 tabletka"), 3);
    p = Package();
    p.vid = 100030;
    p.name = QStringLiteral("Gripoflu Max Demo");
    p.status = statusOverTheCounter;
    p.gid = compound;
    p.kind = QStringLiteral("tabl. powl.");
    p.dose = QStringLiteral("-");
    p.box = QStringLiteral("10 szt.");
    p.company = polvita;
    p.prices = QStringLiteral("-1|17,99|-1|-1");
    p.iid = catalogue.addIndication(
        QStringLiteral("<p>Objawowe leczenie przeziębienia i grypy: gorączka, ból głowy, katar.</p>"), 4);
    p.leaflet = leaflet(p.vid);
    p.warns = warnings({warning(31), warning(0), warning(1)});
    p.substances = QStringList{QStringLiteral("Prep. złoż.")};
    p.eans = QStringList{code(40)};
    catalogue.addPackage(p);

    p.vid = 100031;
    p.box = QStringLiteral("20 szt.");
    p.prices = QStringLiteral("-1|27,49|-1|-1");
    p.leaflet = leaflet(p.vid);
    p.eans = QStringList{code(41), code(42)};
    catalogue.addPackage(p);

    // Quotes and Polish letters in names.
    const int anise = catalogue.addGroup(QStringLiteral("Prep. złoż."), 8);
    describe(catalogue, anise, QStringLiteral("anyż i tymianek"), QStringLiteral("5 ml"), 5);
    p = Package();
    p.vid = 100040;
    p.name = QStringLiteral("Sirop d'Anis Demo");
    p.status = statusOverTheCounter;
    p.gid = anise;
    p.kind = QStringLiteral("syrop");
    p.dose = QStringLiteral("-");
    p.box = QStringLiteral("1 but. 150 ml");
    p.company = essai;
    p.prices = QStringLiteral("-1|16,80|-1|-1");
    p.iid = catalogue.addIndication(QStringLiteral("<p>Kaszel suchy i mokry w przeziębieniu.</p>"), 5);
    p.leaflet = leaflet(p.vid);
    p.warns = warnings({warning(21)});
    p.substances = QStringList{QStringLiteral("Prep. złoż.")};
    p.eans = QStringList{code(50)};
    catalogue.addPackage(p);

    const int mint = catalogue.addGroup(QStringLiteral("Mięty pieprzowej olejek"), 9);
    describe(catalogue, mint, QStringLiteral("olejek miętowy"), QStringLiteral("0,1 g/ml"), 4);
    p.vid = 100041;
    p.name = QStringLiteral("Miętówka Żołądkowa Demo");
    p.gid = mint;
    p.kind = QStringLiteral("krople doustne");
    p.dose = QStringLiteral("0,1 g/ml");
    p.box = QStringLiteral("1 but. 30 ml");
    p.company = kwiatpharm;
    p.prices = QStringLiteral("-1|11,20|-1|-1");
    p.iid = catalogue.addIndication(QStringLiteral("<p>Wzdęcia, uczucie pełności, łagodne dolegliwości "
                                                   "żołądkowe.</p>"),
                                    6);
    p.leaflet = leaflet(p.vid);
    p.warns = warnings({warning(14)});
    p.substances = QStringList{QStringLiteral("Mięty pieprzowej olejek")};
    p.eans = QStringList{code(51)};
    catalogue.addPackage(p);

    // Programme and chemotherapy scopes, with and without attachments.
    const int tenofovir = catalogue.addGroup(QStringLiteral("Tenofowir"), 10);
    describe(catalogue, tenofovir, QStringLiteral("tenofowir"), QStringLiteral("245 mg"), 2);
    p = Package();
    p.vid = 100050;
    p.name = QStringLiteral("Tenofowir Demofarm");
    p.status = statusRestricted;
    p.gid = tenofovir;
    p.kind = QStringLiteral("tabl. powl.");
    p.dose = QStringLiteral("245 mg");
    p.box = QStringLiteral("30 szt.");
    p.company = demofarm;
    p.prices = QStringLiteral("-1|1450,00|-1|-1|5|bezpłatny|14|2");
    p.iid = catalogue.addIndication(QStringLiteral("<p>Przewlekłe wirusowe zapalenie wątroby typu B u dorosłych z "
                                                   "wyrównaną czynnością wątroby.</p>"),
                                    7);
    p.leaflet = leaflet(p.vid);
    p.warns = warnings({warning(16), warning(17), warning(37)});
    p.substances = QStringList{QStringLiteral("Tenofowir")};
    p.eans = QStringList{code(60)};
    catalogue.addPackage(p);
    catalogue.addGifDecision(100050, gifSuspension, QStringLiteral("2025-01-20"),
                             QStringLiteral("gif\\2025\\decyzja_17.pdf"));
    catalogue.addGifDecision(100050, gifResumption, QStringLiteral("2025-02-11"),
                             QStringLiteral("gif\\2025\\decyzja_41.pdf"));
    catalogue.addGifDecision(100050, gifWithdrawal, QStringLiteral("2023-09-05"),
                             QStringLiteral("gif/2023/decyzja_512.pdf"));

    const int capecitabine = catalogue.addGroup(QStringLiteral("Kapecytabina"), 11);
    describe(catalogue, capecitabine, QStringLiteral("kapecytabina"), QStringLiteral("500 mg"), 3);
    p = Package();
    p.vid = 100051;
    p.name = QStringLiteral("Kapecytabina Demofarm");
    p.status = statusPrescription;
    p.gid = capecitabine;
    p.kind = QStringLiteral("tabl. powl.");
    p.dose = QStringLiteral("500 mg");
    p.box = QStringLiteral("120 szt.");
    p.company = demofarm;
    p.prices = QStringLiteral("-1|620,50|-1|-1|5|0,00|13|4");
    p.iid = catalogue.addIndication(QStringLiteral("<p>Rak jelita grubego, rak żołądka, rak piersi.</p>"), 8);
    p.leaflet = leaflet(p.vid);
    p.warns = warnings({warning(37), warning(64), warning(10)});
    p.substances = QStringList{QStringLiteral("Kapecytabina")};
    p.eans = QStringList{code(61)};
    catalogue.addPackage(p);

    p.vid = 100052;
    p.name = QStringLiteral("Kapecytabina Medivia");
    p.company = medivia;
    p.prices = QStringLiteral("-1|598,00|-1|-1|5|0,00|13|5");
    p.leaflet = leaflet(p.vid);
    p.eans = QStringList{code(62)};
    catalogue.addPackage(p);

    const int etanercept = catalogue.addGroup(QStringLiteral("Etanercept"), 12);
    describe(catalogue, etanercept, QStringLiteral("etanercept"), QStringLiteral("50 mg"), 2);
    p = Package();
    p.vid = 100053;
    p.name = QStringLiteral("Etanercept Demo");
    p.status = statusHospital;
    p.gid = etanercept;
    p.kind = QStringLiteral("roztwór do wstrzykiwań");
    p.dose = QStringLiteral("50 mg");
    p.box = QStringLiteral("4 amp.-strz. 1 ml");
    p.company = vistula;
    p.prices = QStringLiteral("-1|3890,00|-1|-1|5|bezpłatny|15|1");
    p.iid = catalogue.addIndication(QStringLiteral("<p>Reumatoidalne zapalenie stawów, łuszczycowe zapalenie "
                                                   "stawów, łuszczyca plackowata.</p>"),
                                    9);
    p.leaflet = leaflet(p.vid);
    p.warns = warnings({warningNoPictogramFridge, warning(64), warningNoPictogramChildren});
    p.substances = QStringList{QStringLiteral("Etanercept")};
    p.eans = QStringList{code(63)};
    catalogue.addPackage(p);

    const int dexamethasone = catalogue.addGroup(QStringLiteral("Deksametazon"), 13);
    describe(catalogue, dexamethasone, QStringLiteral("deksametazon"), QStringLiteral("4 mg"), 3);
    p = Package();
    p.vid = 100054;
    p.name = QStringLiteral("Deksametazon Demofarm");
    p.status = statusPrescription;
    p.gid = dexamethasone;
    p.kind = QStringLiteral("tabl.");
    p.dose = QStringLiteral("4 mg");
    p.box = QStringLiteral("20 szt.");
    p.company = demofarm;
    p.prices = QStringLiteral("-1|15,40|-1|-1|3|4,62|1|3|2|3,20|26|7");
    p.iid = catalogue.addIndication(QStringLiteral("<p>Obrzęk mózgu, ciężkie reakcje alergiczne, choroby "
                                                   "reumatyczne, leczenie wspomagające w onkologii.</p>"),
                                    10);
    p.leaflet = leaflet(p.vid);
    p.warns = warnings({warning(61), warning(6), warning(23)});
    p.substances = QStringList{QStringLiteral("Deksametazon")};
    p.eans = QStringList{code(64)};
    catalogue.addPackage(p);

    // Payment texts that are no number, and level ids that sort as text.
    const int febuxostat = catalogue.addGroup(QStringLiteral("Febuksostat"), 14);
    describe(catalogue, febuxostat, QStringLiteral("febuksostat"), QStringLiteral("80 mg"), 2);
    const int febuxostatIndication =
        catalogue.addIndication(QStringLiteral("<p>Przewlekła hiperurykemia z odkładaniem się kryształów "
                                               "moczanów.</p>"),
                                11);
    p = Package();
    p.vid = 100060;
    p.name = QStringLiteral("Febuksostat Demofarm");
    p.status = statusPrescription;
    p.gid = febuxostat;
    p.kind = QStringLiteral("tabl. powl.");
    p.dose = QStringLiteral("80 mg");
    p.box = QStringLiteral("28 szt.");
    p.company = demofarm;
    p.prices = QStringLiteral("-1| |-1|-1|2|X|20|2|3|-|20|2|4||20|2");
    p.iid = febuxostatIndication;
    p.leaflet = leaflet(p.vid);
    p.warns = warnings({warning(16), warning(1)});
    p.substances = QStringList{QStringLiteral("Febuksostat")};
    p.eans = QStringList{code(70)};
    catalogue.addPackage(p);

    p.vid = 100061;
    p.name = QStringLiteral("Febuksostat Medivia");
    p.kind = QStringLiteral("tabl.");
    p.company = medivia;
    p.prices = QStringLiteral("-1|42,10|-1|-1|9|bezpłatnie|20|2|10|bez - dopłaty|20|2");
    p.leaflet = leaflet(p.vid);
    p.eans = QStringList{code(71)};
    catalogue.addPackage(p);

    p.vid = 100062;
    p.name = QStringLiteral("Febuksostat Polvita");
    p.company = polvita;
    p.prices = QStringLiteral("-1|39,99|-1|-1|2|12.00|20|2|3|3,50|20|2");
    p.leaflet = leaflet(p.vid);
    p.eans = QStringList{code(72)};
    catalogue.addPackage(p);

    // Nothing around it: no description, warning, leaflet or decision.
    const int nitro = catalogue.addGroup(QStringLiteral("Nitrogliceryna"), 15);
    p = Package();
    p.vid = 100070;
    p.name = QStringLiteral("Nitrogliceryna Demofarm");
    p.status = statusPrescription;
    p.gid = nitro;
    p.kind = QStringLiteral("tabl. podjęzykowe");
    p.dose = QStringLiteral("0,5 mg");
    p.box = QStringLiteral("30 szt.");
    p.company = demofarm;
    p.prices = QStringLiteral("-1|12,30|-1|-1");
    p.substances = QStringList{QStringLiteral("Nitrogliceryna")};
    p.eans = QStringList{code(80)};
    catalogue.addPackage(p);

    const int iron = catalogue.addGroup(QStringLiteral("Żelaza siarczan"), 16);
    describe(catalogue, iron, QStringLiteral("żelaza siarczan"), QStringLiteral("80 mg Fe"), 4);
    p = Package();
    p.vid = 100071;
    p.name = QStringLiteral("Żelaza siarczan Demofarm");
    p.status = statusOverTheCounter;
    p.gid = iron;
    p.kind = QStringLiteral("tabl. o przedł. uwalnianiu");
    p.dose = QStringLiteral("80 mg Fe");
    p.box = QStringLiteral("30 szt.");
    p.company = demofarm;
    p.prices = QStringLiteral("-1|13,75|-1|-1");
    p.iid = catalogue.addIndication(QStringLiteral("<p>Niedokrwistość z niedoboru żelaza.</p>"), 12);
    p.leaflet = leaflet(p.vid);
    p.warns = warnings({warning(4), warning(47)});
    p.substances = QStringList{QStringLiteral("Żelaza siarczan")};
    p.eans = QStringList{code(81)};
    catalogue.addPackage(p);

    // No full-price row anywhere in the group, so the substitutes' labels
    // come from their refund rows: "X", "bez…", level "10" before "9".
    catalogue.addGroup(QStringLiteral("Tikagrelor"), noFullPriceGroup);
    describe(catalogue, noFullPriceGroup, QStringLiteral("tikagrelor"), QStringLiteral("90 mg"), 3);
    p = Package();
    p.status = statusPrescription;
    p.gid = noFullPriceGroup;
    p.kind = QStringLiteral("tabl. powl.");
    p.dose = QStringLiteral("90 mg");
    p.box = QStringLiteral("56 szt.");
    p.iid = catalogue.addIndication(QStringLiteral("<p>Zapobieganie zdarzeniom zakrzepowym u dorosłych z ostrym "
                                                   "zespołem wieńcowym.</p>"),
                                    13);
    p.warns = warnings({warning(29), warning(30)});
    p.substances = QStringList{QStringLiteral("Tikagrelor")};
    addVariant(catalogue, p, 100080, QStringLiteral("Tikagrelor Demofarm"), demofarm,
               QStringLiteral("2|3,20|11|2|4|58,40|11|2"), 90);
    addVariant(catalogue, p, 100081, QStringLiteral("Tikagrelor Medivia"), medivia, QStringLiteral("2|3,50|11|2"), 91);
    addVariant(catalogue, p, 100082, QStringLiteral("Tikagrelor Polvita"), polvita, QStringLiteral("3|12.00|11|2"),
               92);
    p.kind = QStringLiteral("tabl.");
    addVariant(catalogue, p, 100083, QStringLiteral("Tikagrelor Bałtyk"), baltyk, QStringLiteral("2|X|11|2"), 93);
    addVariant(catalogue, p, 100084, QStringLiteral("Tikagrelor Vistula"), vistula,
               QStringLiteral("9|1,00|11|2|10|bezpłatnie|11|2"), 94);

    // A candidate with one more substance is a substitute; the other way round
    // it is not.
    const int lercanidipine = catalogue.addGroup(QStringLiteral("Lerkanidypina"), 18);
    describe(catalogue, lercanidipine, QStringLiteral("lerkanidypina"), QStringLiteral("10 mg"), 4);
    p = Package();
    p.status = statusPrescription;
    p.gid = lercanidipine;
    p.kind = QStringLiteral("tabl. powl.");
    p.dose = QStringLiteral("10 mg");
    p.box = QStringLiteral("28 szt.");
    p.iid = catalogue.addIndication(QStringLiteral("<p>Łagodne do umiarkowanego nadciśnienie tętnicze "
                                                   "samoistne.</p>"),
                                    14);
    p.warns = warnings({warning(3), warning(24)});
    p.substances = QStringList{QStringLiteral("Lerkanidypina")};
    addVariant(catalogue, p, 100085, QStringLiteral("Lerkanidypina Demofarm"), demofarm,
               QStringLiteral("-1|24,90|-1|-1|3|9,85|2|2"), 100);
    p.gid = catalogue.addGroup(QStringLiteral("Lerkanidypina + enalapryl"), 19);
    p.substances.append(QStringLiteral("Enalapryl"));
    addVariant(catalogue, p, 100086, QStringLiteral("Lerkanidypina z enalaprylem Demo"), medivia,
               QStringLiteral("-1|32,50|-1|-1|3|14,20|2|2"), 101);

    // Codes that lead nowhere: a package of a group that g doesn't hold, and a
    // code of a package that v doesn't hold.
    p = Package();
    p.vid = packageWithoutGroup;
    p.name = QStringLiteral("Cylostazol Demofarm");
    p.status = statusPrescription;
    p.gid = missingGroup;
    p.kind = QStringLiteral("tabl.");
    p.dose = QStringLiteral("100 mg");
    p.box = QStringLiteral("60 szt.");
    p.company = demofarm;
    p.prices = QStringLiteral("-1|39,90|-1|-1");
    p.leaflet = leaflet(p.vid);
    p.substances = QStringList{QStringLiteral("Cylostazol")};
    p.eans = QStringList{code(110)};
    catalogue.addPackage(p);
    catalogue.addEan(vidWithoutPackage, code(111));

    // The scope names a programme and chemotherapy: the programme's file wins
    // over the off-label one.
    const int irinotecan = catalogue.addGroup(QStringLiteral("Irynotekan"), 20);
    describe(catalogue, irinotecan, QStringLiteral("irynotekan"), QStringLiteral("20 mg/ml"), 3);
    p = Package();
    p.vid = 100089;
    p.name = QStringLiteral("Irynotekan Demofarm");
    p.status = statusHospital;
    p.gid = irinotecan;
    p.kind = QStringLiteral("koncentrat do sporz. roztw. do infuzji");
    p.dose = QStringLiteral("20 mg/ml");
    p.box = QStringLiteral("1 fiol. 5 ml");
    p.company = demofarm;
    p.prices = QStringLiteral("-1|189,00|-1|-1|%1|bezpłatny|%2|%3")
                   .arg(freeOfCharge)
                   .arg(scopeProgrammeChemotherapy)
                   .arg(offLabelChemoFileC13);
    p.iid = catalogue.addIndication(QStringLiteral("<p>Zaawansowany rak jelita grubego, w skojarzeniu z "
                                                   "5-fluorouracylem i kwasem folinowym.</p>"),
                                    15);
    p.leaflet = leaflet(p.vid);
    p.warns = warnings({warning(37), warning(64)});
    p.substances = QStringList{QStringLiteral("Irynotekan")};
    p.eans = QStringList{code(120)};
    catalogue.addPackage(p);

    // Rows whose level reads "100%" although its id is not -1.
    const int nitrendipine = catalogue.addGroup(QStringLiteral("Nitrendypina"), 21);
    describe(catalogue, nitrendipine, QStringLiteral("nitrendypina"), QStringLiteral("20 mg"), 4);
    p = Package();
    p.status = statusPrescription;
    p.gid = nitrendipine;
    p.kind = QStringLiteral("tabl.");
    p.dose = QStringLiteral("20 mg");
    p.box = QStringLiteral("30 szt.");
    p.iid = catalogue.addIndication(QStringLiteral("<p>Nadciśnienie tętnicze samoistne.</p>"), 16);
    p.warns = warnings({warning(3)});
    p.substances = QStringList{QStringLiteral("Nitrendypina")};
    addVariant(catalogue, p, 100090, QStringLiteral("Nitrendypina Demofarm"), demofarm,
               QStringLiteral("1|18,40|2|2"), 130);
    addVariant(catalogue, p, 100091, QStringLiteral("Nitrendypina Medivia"), medivia,
               QStringLiteral("-1|21,00|-1|-1|1|19,60|2|2"), 131);

    // NULL where the rows above have empty texts.
    p = Package();
    p.vid = 100092;
    p.name = QStringLiteral("Chlortalidon Demofarm");
    p.status = statusPrescription;
    p.gid = catalogue.addGroup(QStringLiteral("Chlortalidon"), 22);
    p.kind = QStringLiteral("tabl.");
    p.dose = QStringLiteral("50 mg");
    p.box = QStringLiteral("20 szt.");
    p.company = demofarm;
    p.substances = QStringList{QStringLiteral("Chlortalidon")};
    p.eans = QStringList{code(140)};
    p.nullColumns = QStringList{QStringLiteral("prices"), QStringLiteral("leaflet"), QStringLiteral("warns")};
    catalogue.addPackage(p);
}
