#include "substancepool.h"

#include "referenceids.h"

namespace {

struct Row {
    const char* names; // "+" between the substances of a combination
    const char* doses; // "|" between strengths
    const char* forms; // "|" between forms
    int scope;
    int status;
    const char* indication;
};

using namespace ReferenceIds;

const char* const tablets = "tabl.|tabl. powl.";
const char* const capsules = "kaps.|kaps. twarde";
const char* const prolonged = "tabl. o przedł. uwalnianiu|tabl. powl. o przedł. uwalnianiu";
const char* const entericCoated = "kaps. dojel.|tabl. dojel.";
const int rx = statusPrescription;
const int otc = statusOverTheCounter;

// None of these is used by the showcase drugs, whose substitutes stay counted.
const Row rows[] = {
    {"amlodypina", "5 mg|10 mg", tablets, scopeHypertension, rx,
     "Nadciśnienie tętnicze. Przewlekła stabilna dławica piersiowa."},
    {"bisoprolol", "2,5 mg|5 mg|10 mg", tablets, scopeHypertension, rx,
     "Nadciśnienie tętnicze. Stabilna przewlekła niewydolność serca."},
    {"metoprolol", "25 mg|50 mg|100 mg", prolonged, scopeHypertension, rx,
     "Nadciśnienie tętnicze, dławica piersiowa, zaburzenia rytmu serca."},
    {"ramipryl", "2,5 mg|5 mg|10 mg", capsules, scopeHypertension, rx,
     "Nadciśnienie tętnicze. Prewencja chorób sercowo-naczyniowych."},
    {"peryndopryl", "4 mg|5 mg|8 mg|10 mg", tablets, scopeHypertension, rx,
     "Nadciśnienie tętnicze. Niewydolność serca."},
    {"losartan", "50 mg|100 mg", tablets, scopeHypertension, rx,
     "Nadciśnienie tętnicze pierwotne u dorosłych."},
    {"walsartan", "80 mg|160 mg", tablets, scopeHypertension, rx,
     "Nadciśnienie tętnicze. Stan po świeżym zawale serca."},
    {"telmisartan", "40 mg|80 mg", "tabl.", scopeHypertension, rx,
     "Nadciśnienie tętnicze samoistne. Prewencja sercowo-naczyniowa."},
    {"kandesartan", "8 mg|16 mg|32 mg", "tabl.", scopeHypertension, rx,
     "Nadciśnienie tętnicze. Niewydolność serca z zaburzeniem czynności skurczowej."},
    {"indapamid", "1,5 mg", prolonged, scopeHypertension, rx, "Samoistne nadciśnienie tętnicze."},
    {"hydrochlorotiazyd", "12,5 mg|25 mg", "tabl.", scopeHypertension, rx,
     "Nadciśnienie tętnicze. Obrzęki pochodzenia sercowego, wątrobowego i nerkowego."},
    {"furosemid", "40 mg", "tabl.", scopeHeartFailure, rx, "Obrzęki w przebiegu niewydolności serca i nerek."},
    {"spironolakton", "25 mg|50 mg|100 mg", tablets, scopeHeartFailure, rx,
     "Niewydolność serca. Hiperaldosteronizm pierwotny."},
    {"torasemid", "5 mg|10 mg", "tabl.", scopeHeartFailure, rx, "Obrzęki w przebiegu zastoinowej niewydolności serca."},
    {"karwedilol", "6,25 mg|12,5 mg|25 mg", tablets, scopeHeartFailure, rx,
     "Przewlekła niewydolność serca. Nadciśnienie tętnicze."},
    {"nebiwolol", "5 mg", "tabl.", scopeHypertension, rx, "Samoistne nadciśnienie tętnicze."},
    {"atorwastatyna", "10 mg|20 mg|40 mg|80 mg", tablets, scopeCholesterol, rx,
     "Hipercholesterolemia pierwotna i mieszana dyslipidemia."},
    {"rosuwastatyna", "5 mg|10 mg|20 mg|40 mg", tablets, scopeCholesterol, rx,
     "Hipercholesterolemia. Zapobieganie zdarzeniom sercowo-naczyniowym."},
    {"simwastatyna", "20 mg|40 mg", tablets, scopeCholesterol, rx, "Hipercholesterolemia. Prewencja sercowo-naczyniowa."},
    {"ezetymib", "10 mg", "tabl.", scopeCholesterol, rx, "Hipercholesterolemia pierwotna, w skojarzeniu ze statyną."},
    {"fenofibrat", "145 mg|215 mg|267 mg", capsules, scopeCholesterol, rx, "Ciężka hipertriglicerydemia."},
    {"metformina", "500 mg|850 mg|1000 mg", tablets, scopeDiabetes, rx,
     "Cukrzyca typu 2, zwłaszcza u pacjentów z nadwagą."},
    {"gliklazyd", "30 mg|60 mg", prolonged, scopeDiabetes, rx, "Cukrzyca insulinoniezależna (typu 2) u dorosłych."},
    {"glimepiryd", "1 mg|2 mg|3 mg|4 mg", "tabl.", scopeDiabetes, rx, "Cukrzyca typu 2."},
    {"sitagliptyna", "50 mg|100 mg", "tabl. powl.", scopeDiabetes, rx,
     "Cukrzyca typu 2, w skojarzeniu z innymi lekami przeciwcukrzycowymi."},
    {"dapagliflozyna", "10 mg", "tabl. powl.", scopeDiabetes, rx,
     "Cukrzyca typu 2. Niewydolność serca. Przewlekła choroba nerek."},
    {"lewotyroksyna", "25 µg|50 µg|75 µg|100 µg|125 µg", "tabl.", scopeThyroid, rx,
     "Niedoczynność tarczycy. Wole obojętne."},
    {"tiamazol", "5 mg|10 mg", "tabl. powl.", 0, rx, "Nadczynność tarczycy."},
    {"omeprazol", "10 mg|20 mg|40 mg", entericCoated, scopeUlcer, rx,
     "Choroba wrzodowa żołądka i dwunastnicy. Refluksowe zapalenie przełyku."},
    {"pantoprazol", "20 mg|40 mg", "tabl. dojel.", scopeUlcer, rx,
     "Choroba refluksowa przełyku. Eradykacja Helicobacter pylori."},
    {"esomeprazol", "20 mg|40 mg", entericCoated, scopeUlcer, rx, "Choroba refluksowa przełyku. Zespół Zollingera-Ellisona."},
    {"famotydyna", "20 mg|40 mg", "tabl. powl.", scopeUlcer, otc, "Zgaga i nadkwaśność."},
    {"drotaweryna", "40 mg|80 mg", "tabl.", 0, otc, "Stany skurczowe mięśni gładkich przewodu pokarmowego i dróg moczowych."},
    {"mebeweryna", "135 mg|200 mg", "tabl. powl.|kaps. o przedł. uwalnianiu", 0, rx,
     "Objawowe leczenie zespołu jelita drażliwego."},
    {"loperamid", "2 mg", capsules, 0, otc, "Objawowe leczenie ostrej biegunki."},
    {"mesalazyna", "500 mg|1 g", "tabl. dojel.|tabl. o przedł. uwalnianiu", scopeUlcer, rx,
     "Wrzodziejące zapalenie jelita grubego."},
    {"azytromycyna", "250 mg|500 mg", tablets, scopeInfections, rx,
     "Zakażenia dróg oddechowych, skóry i tkanek miękkich wywołane przez drobnoustroje wrażliwe."},
    {"klarytromycyna", "250 mg|500 mg", "tabl. powl.", scopeInfections, rx,
     "Zakażenia dróg oddechowych. Eradykacja Helicobacter pylori."},
    {"cefuroksym", "250 mg|500 mg", "tabl. powl.", scopeInfections, rx,
     "Zakażenia górnych i dolnych dróg oddechowych, dróg moczowych, skóry."},
    {"cyprofloksacyna", "250 mg|500 mg|750 mg", "tabl. powl.", scopeInfections, rx,
     "Powikłane zakażenia dróg moczowych. Zakażenia kości i stawów."},
    {"lewofloksacyna", "250 mg|500 mg", "tabl. powl.", scopeInfections, rx, "Pozaszpitalne zapalenie płuc."},
    {"doksycyklina", "100 mg", "kaps.|tabl.", scopeInfections, rx, "Zakażenia bakteryjne. Trądzik. Borelioza."},
    {"klindamycyna", "150 mg|300 mg|600 mg", capsules, scopeInfections, rx, "Ciężkie zakażenia bakteriami beztlenowymi."},
    {"furazydyna", "50 mg|100 mg", "tabl.", 0, otc, "Zakażenia dolnych dróg moczowych."},
    {"flukonazol", "50 mg|100 mg|150 mg", capsules, scopeInfections, rx, "Kandydoza pochwy i błon śluzowych."},
    {"acyklowir", "200 mg|400 mg|800 mg", "tabl.", scopeInfections, rx, "Zakażenia wirusem opryszczki i półpaśca."},
    {"ketoprofen", "50 mg|100 mg|150 mg", "kaps.|tabl. o przedł. uwalnianiu", scopePain, rx,
     "Choroby reumatyczne. Bóle pourazowe i pooperacyjne."},
    {"diklofenak", "50 mg|75 mg|100 mg", "tabl. dojel.|kaps. dojel.", scopePain, rx,
     "Choroba zwyrodnieniowa stawów. Reumatoidalne zapalenie stawów."},
    {"naproksen", "250 mg|500 mg", tablets, scopePain, rx, "Bóle reumatyczne, bolesne miesiączkowanie."},
    {"meloksykam", "7,5 mg|15 mg", "tabl.", scopePain, rx, "Choroba zwyrodnieniowa stawów, zesztywniające zapalenie stawów kręgosłupa."},
    {"nimesulid", "100 mg", "granulat do sporz. zawiesiny doustnej|tabl.", 0, rx, "Ostry ból. Bolesne miesiączkowanie."},
    {"tramadol", "50 mg|100 mg", "kaps.|tabl. o przedł. uwalnianiu", scopeCancerPain, rx, "Ból o nasileniu umiarkowanym do silnego."},
    {"morfina", "10 mg|30 mg|60 mg", prolonged, scopeCancerPain, statusNarcotic, "Silny ból przewlekły, w tym nowotworowy."},
    {"oksykodon", "10 mg|20 mg|40 mg", prolonged, scopeCancerPain, statusNarcotic, "Silny ból wymagający stosowania opioidów."},
    {"gabapentyna", "100 mg|300 mg|400 mg", capsules, scopeEpilepsy, rx, "Padaczka. Ból neuropatyczny obwodowy."},
    {"pregabalina", "75 mg|150 mg|300 mg", "kaps. twarde", scopeEpilepsy, rx, "Ból neuropatyczny. Padaczka. Uogólnione zaburzenia lękowe."},
    {"karbamazepina", "200 mg|400 mg", "tabl.|tabl. o przedł. uwalnianiu", scopeEpilepsy, rx, "Padaczka. Neuralgia nerwu trójdzielnego."},
    {"lamotrygina", "25 mg|50 mg|100 mg", "tabl.", scopeEpilepsy, rx, "Padaczka. Zapobieganie epizodom depresji w chorobie dwubiegunowej."},
    {"lewetyracetam", "250 mg|500 mg|1000 mg", "tabl. powl.", scopeEpilepsy, rx, "Napady częściowe z wtórnym uogólnieniem lub bez."},
    {"sertralina", "50 mg|100 mg", "tabl. powl.", scopeDepression, rx, "Epizody dużej depresji. Zaburzenia obsesyjno-kompulsyjne."},
    {"escitalopram", "5 mg|10 mg|20 mg", "tabl. powl.", scopeDepression, rx, "Depresja. Zaburzenie lękowe z napadami lęku."},
    {"fluoksetyna", "20 mg", "kaps. twarde|tabl.", scopeDepression, rx, "Duża depresja. Bulimia."},
    {"wenlafaksyna", "37,5 mg|75 mg|150 mg", "kaps. o przedł. uwalnianiu|tabl. o przedł. uwalnianiu", scopeDepression, rx,
     "Epizody dużej depresji. Uogólnione zaburzenia lękowe."},
    {"duloksetyna", "30 mg|60 mg", "kaps. dojel.", scopeDepression, rx, "Duże zaburzenia depresyjne. Ból w neuropatii cukrzycowej."},
    {"mirtazapina", "15 mg|30 mg|45 mg", "tabl. powl.|tabl. ulegające rozpadowi w jamie ustnej", scopeDepression, rx,
     "Epizody dużej depresji."},
    {"kwetiapina", "25 mg|100 mg|200 mg|300 mg", tablets, scopeSchizophrenia, rx, "Schizofrenia. Choroba afektywna dwubiegunowa."},
    {"olanzapina", "5 mg|10 mg|20 mg", "tabl. powl.|tabl. ulegające rozpadowi w jamie ustnej", scopeSchizophrenia, rx,
     "Schizofrenia. Epizody maniakalne."},
    {"arypiprazol", "10 mg|15 mg", "tabl.", scopeSchizophrenia, rx, "Schizofrenia u dorosłych i młodzieży."},
    {"alprazolam", "0,25 mg|0,5 mg|1 mg", "tabl.", 0, statusRestricted, "Stany lękowe. Lęk napadowy."},
    {"zolpidem", "10 mg", "tabl. powl.", 0, rx, "Krótkotrwałe leczenie bezsenności."},
    {"hydroksyzyna", "10 mg|25 mg", "tabl. powl.|syrop", 0, rx, "Lęk. Świąd. Zaburzenia snu."},
    {"cetyryzyna", "10 mg", tablets, scopeAllergy, otc, "Objawy alergicznego nieżytu nosa i pokrzywki."},
    {"lewocetyryzyna", "5 mg", "tabl. powl.", scopeAllergy, rx, "Alergiczny nieżyt nosa, przewlekła pokrzywka."},
    {"desloratadyna", "5 mg", "tabl. powl.|tabl. ulegające rozpadowi w jamie ustnej", scopeAllergy, rx,
     "Alergiczny nieżyt nosa. Pokrzywka."},
    {"feksofenadyna", "120 mg|180 mg", "tabl. powl.", scopeAllergy, otc, "Sezonowy alergiczny nieżyt nosa."},
    {"montelukast", "4 mg|5 mg|10 mg", "tabl. powl.|tabl. do rozgryzania i żucia", scopeAsthma, rx,
     "Astma oskrzelowa przewlekła. Sezonowy alergiczny nieżyt nosa."},
    {"budezonid", "200 µg|400 µg", "proszek do inhalacji", scopeAsthma, rx, "Przewlekłe leczenie astmy oskrzelowej."},
    {"salbutamol", "100 µg/dawkę", "aerozol inhalacyjny", scopeAsthma, rx, "Doraźne leczenie duszności w astmie i POChP."},
    {"metyloprednizolon", "4 mg|16 mg|32 mg", "tabl.", 0, rx, "Choroby reumatyczne, alergiczne i zapalne wymagające glikokortykosteroidów."},
    {"prednizon", "5 mg|10 mg|20 mg", "tabl.", 0, rx, "Choroby zapalne i autoimmunologiczne."},
    {"warfaryna", "3 mg|5 mg", "tabl.", scopeThrombosis, rx, "Leczenie i profilaktyka zakrzepicy żylnej i zatorowości płucnej."},
    {"acenokumarol", "1 mg|4 mg", "tabl.", scopeThrombosis, rx, "Profilaktyka i leczenie choroby zakrzepowo-zatorowej."},
    {"rywaroksaban", "10 mg|15 mg|20 mg", "tabl. powl.", scopeThrombosis, rx,
     "Zapobieganie udarowi u pacjentów z migotaniem przedsionków."},
    {"apiksaban", "2,5 mg|5 mg", "tabl. powl.", scopeThrombosis, rx, "Profilaktyka żylnej choroby zakrzepowo-zatorowej."},
    {"dabigatran", "110 mg|150 mg", "kaps. twarde", scopeThrombosis, rx, "Profilaktyka udaru w niezastawkowym migotaniu przedsionków."},
    {"klopidogrel", "75 mg", "tabl. powl.", scopeThrombosis, rx, "Zapobieganie zdarzeniom zakrzepowym w miażdżycy."},
    {"kwas acetylosalicylowy", "75 mg|150 mg", "tabl. dojel.|tabl.", scopeThrombosis, otc,
     "Profilaktyka zawału serca i udaru niedokrwiennego mózgu."},
    {"tamsulosyna", "0,4 mg", "kaps. o przedł. uwalnianiu|tabl. o przedł. uwalnianiu", scopeUrology, rx,
     "Objawy łagodnego rozrostu gruczołu krokowego."},
    {"finasteryd", "5 mg", "tabl. powl.", scopeUrology, rx, "Łagodny rozrost gruczołu krokowego."},
    {"solifenacyna", "5 mg|10 mg", "tabl. powl.", scopeUrology, rx, "Zespół pęcherza nadreaktywnego."},
    {"sildenafil", "25 mg|50 mg|100 mg", "tabl. powl.|tabl. do rozgryzania i żucia", 0, rx, "Zaburzenia erekcji."},
    {"alopurynol", "100 mg|300 mg", "tabl.", scopeGout, rx, "Dna moczanowa. Hiperurykemia."},
    {"kolchicyna", "0,5 mg", "tabl. powl.", scopeGout, rx, "Ostry napad dny moczanowej."},
    {"kwas alendronowy", "70 mg", "tabl.", scopeOsteoporosis, rx, "Osteoporoza pomenopauzalna."},
    {"cholekalcyferol", "1000 j.m.|2000 j.m.|4000 j.m.", "kaps. miękkie|tabl.", 0, otc, "Profilaktyka niedoboru witaminy D."},
    {"kwas foliowy", "0,4 mg|5 mg", "tabl.", 0, otc, "Profilaktyka wad cewy nerwowej płodu."},
    {"lewodopa+benserazyd", "100 mg + 25 mg|200 mg + 50 mg", "kaps.|tabl.", scopeParkinson, rx, "Choroba Parkinsona."},
    {"ropinirol", "2 mg|4 mg|8 mg", prolonged, scopeParkinson, rx, "Choroba Parkinsona. Zespół niespokojnych nóg."},
    {"pramipeksol", "0,18 mg|0,7 mg", "tabl.", scopeParkinson, rx, "Objawy samoistnej choroby Parkinsona."},
    {"donepezil", "5 mg|10 mg", "tabl. powl.|tabl. ulegające rozpadowi w jamie ustnej", scopeDementia, rx,
     "Łagodna i umiarkowana postać otępienia typu alzheimerowskiego."},
    {"memantyna", "10 mg|20 mg", "tabl. powl.", scopeDementia, rx, "Umiarkowana i ciężka postać choroby Alzheimera."},
    {"betahistyna", "8 mg|16 mg|24 mg", "tabl.", 0, rx, "Zespół Meniere'a: zawroty głowy, szumy uszne."},
    {"metoklopramid", "10 mg", "tabl.", 0, rx, "Nudności i wymioty, także po chemioterapii."},
    {"ondansetron", "4 mg|8 mg", "tabl. powl.|tabl. ulegające rozpadowi w jamie ustnej", scopeChemotherapySupport, rx,
     "Nudności i wymioty wywołane chemioterapią lub radioterapią."},
    {"sumatryptan", "50 mg|100 mg", "tabl. powl.", 0, rx, "Doraźne leczenie napadów migreny."},
    {"propranolol", "10 mg|40 mg", "tabl.", scopeHypertension, rx, "Nadciśnienie tętnicze. Profilaktyka migreny."},
    {"werapamil", "40 mg|80 mg|120 mg|240 mg", "tabl. powl.|tabl. o przedł. uwalnianiu", scopeHypertension, rx,
     "Częstoskurcz nadkomorowy. Nadciśnienie tętnicze."},
    {"trimetazydyna", "35 mg", prolonged, 0, rx, "Leczenie wspomagające stabilnej dławicy piersiowej."},
    {"letrozol", "2,5 mg", "tabl. powl.", scopeChemotherapy, rx, "Rak piersi z obecnością receptorów hormonalnych."},
    {"anastrozol", "1 mg", "tabl. powl.", scopeChemotherapy, rx, "Zaawansowany rak piersi u kobiet po menopauzie."},
    {"tamoksyfen", "10 mg|20 mg", "tabl.", scopeChemotherapy, rx, "Rak piersi."},
    {"metotreksat", "2,5 mg|10 mg", "tabl.", scopeProgrammeArthritis, rx, "Reumatoidalne zapalenie stawów. Łuszczyca."},
    {"entekawir", "0,5 mg|1 mg", "tabl. powl.", scopeProgrammeHepatitis, statusRestricted,
     "Przewlekłe wirusowe zapalenie wątroby typu B."},
    {"hydroksychlorochina", "200 mg", "tabl. powl.", scopePsoriasis, rx, "Reumatoidalne zapalenie stawów. Toczeń."},
    {"takrolimus", "0,5 mg|1 mg|5 mg", "kaps. twarde|kaps. o przedł. uwalnianiu", 0, statusRestricted,
     "Profilaktyka odrzucania przeszczepu."},
    {"ambroksol", "15 mg/5 ml|30 mg/5 ml", "syrop|roztwór doustny", 0, otc, "Choroby dróg oddechowych z zalegającą wydzieliną."},
    {"acetylocysteina", "200 mg|600 mg", "tabl. musujące|granulat musujący", 0, otc, "Mukolityczne leczenie chorób oskrzeli."},
    {"ksylometazolina", "0,05%|0,1%", "aerozol do nosa, roztwór", 0, otc, "Obrzęk błony śluzowej nosa w przeziębieniu."},
    {"latanoprost", "50 µg/ml", "krople do oczu, roztwór", scopeGlaucoma, rx, "Jaskra z otwartym kątem przesączania."},
    {"timolol", "2,5 mg/ml|5 mg/ml", "krople do oczu, roztwór", scopeGlaucoma, rx, "Podwyższone ciśnienie wewnątrzgałkowe."},
    {"klotrimazol", "10 mg/g", "krem", 0, otc, "Grzybice skóry."},
    {"hydrokortyzon", "10 mg/g", "krem|maść", 0, otc, "Stany zapalne i swędzące skóry."},
    {"mometazon", "1 mg/g", "krem|maść", scopePsoriasis, rx, "Łuszczyca, atopowe zapalenie skóry."},
    {"enoksaparyna", "20 mg/0,2 ml|40 mg/0,4 ml", "roztwór do wstrzykiwań", scopeThrombosis, rx,
     "Profilaktyka żylnej choroby zakrzepowo-zatorowej."},
    {"amlodypina+walsartan", "5 mg + 80 mg|5 mg + 160 mg|10 mg + 160 mg", "tabl. powl.", scopeHypertension, rx,
     "Nadciśnienie tętnicze niewystarczająco kontrolowane monoterapią."},
    {"peryndopryl+indapamid", "5 mg + 1,25 mg|10 mg + 2,5 mg", tablets, scopeHypertension, rx,
     "Samoistne nadciśnienie tętnicze."},
    {"bisoprolol+amlodypina", "5 mg + 5 mg|10 mg + 10 mg", "tabl.", scopeHypertension, rx,
     "Nadciśnienie tętnicze jako leczenie substytucyjne."},
    {"atorwastatyna+ezetymib", "10 mg + 10 mg|20 mg + 10 mg", "tabl. powl.", scopeCholesterol, rx,
     "Hipercholesterolemia pierwotna."},
    {"metformina+sitagliptyna", "50 mg + 1000 mg", "tabl. powl.", scopeDiabetes, rx, "Cukrzyca typu 2."},
    {"losartan+hydrochlorotiazyd", "50 mg + 12,5 mg|100 mg + 25 mg", "tabl. powl.", scopeHypertension, rx,
     "Samoistne nadciśnienie tętnicze."},
    {"Prep. złoż.", "-", "tabl.|tabl. powl.|kaps.|syrop", 0, otc,
     "Preparat złożony: uzupełnienie diety w witaminy i składniki mineralne."},
};

QStringList split(const char* text, const char* separator)
{
    return QString::fromUtf8(text).split(QString::fromUtf8(separator));
}

} // namespace

const QList<SubstancePool::Substance>& SubstancePool::substances()
{
    static const QList<Substance> all = [] {
        QList<Substance> list;
        for (const Row& row : rows)
            list.append({split(row.names, "+"), split(row.doses, "|"), split(row.forms, "|"), row.scope, row.status,
                         QString::fromUtf8(row.indication)});
        return list;
    }();
    return all;
}
