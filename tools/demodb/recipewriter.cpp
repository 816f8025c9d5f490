#include "recipewriter.h"

#include "tablewriter.h"

#include <QVariant>

namespace {

struct Ingredient {
    int substance;
    const char* amount;
    const char* additional;
    const char* note;
};

struct RecipeText {
    int drug;
    const char* name;
    const char* realization;
    const char* use;
    const char* comments;
    Ingredient ingredients[4]; // substance 0 ends the list
};

const char* const groups[] = {
    "Maści", "Kremy i emulsje", "Zasypki i pudry płynne", "Roztwory do stosowania na skórę",
    "Mieszanki doustne", "Czopki i globulki", "Krople do oczu i uszu", "Proszki dzielone",
};

const char* const substances[][2] = {
    {"Acidum boricum", "odkażające"},
    {"Vaselinum album", "podłoże maściowe"},
    {"Ichthammolum", "przeciwzapalne, ściągające"},
    {"Zinci oxidum", "ściągające, osuszające"},
    {"Talcum", "osuszające, zasypkowe"},
    {"Aqua purificata", "rozpuszczalnik"},
    {"Glycerolum", "nawilżające"},
    {"Ethanolum 70%", "odkażające, rozpuszczalnik"},
    {"Mentholum", "chłodzące, przeciwświądowe"},
    {"Camphora", "rozgrzewające, drażniące skórę"},
    {"Acidum salicylicum", "keratolityczne"},
    {"Lanolinum", "podłoże, emolient"},
    {"Paraffinum liquidum", "natłuszczające"},
    {"Hydrocortisoni acetas", "przeciwzapalne"},
    {"Nystatinum", "przeciwgrzybicze"},
    {"Metronidazolum", "przeciwbakteryjne, przeciwpierwotniakowe"},
    {"Oleum Ricini", "natłuszczające"},
    {"Papaverini hydrochloridum", "rozkurczowe"},
    {"Natrii chloridum", "izotonizujące"},
    {"Sulfur praecipitatum", "przeciwtrądzikowe"},
    {"Resorcinolum", "keratolityczne, odkażające"},
    {"Eucerinum", "podłoże absorpcyjne"},
    {"Codeini phosphas", "przeciwkaszlowe"},
    {"Thymi extractum fluidum", "wykrztuśne"},
    {"Sirupus simplex", "korygujące smak"},
    {"Oleum Cacao", "podłoże czopkowe"},
    {"Natrii hydrogenocarbonas", "alkalizujące"},
    {"Urea", "nawilżające, keratolityczne"},
    {"Lidocaini hydrochloridum", "miejscowo znieczulające"},
    {"Chloramphenicolum", "przeciwbakteryjne"},
    {"Oxycocci fructus succus", "zakwaszające, przeciwbakteryjne"},
};

struct DrugText {
    const char* name;
    int group;
    const char* synonym;
};

const DrugText drugs[] = {
    {"Maść borna", 1, "Unguentum Acidi borici"},
    {"Maść ichtiolowa", 1, "Unguentum Ichthammoli"},
    {"Maść cynkowa", 1, "Unguentum Zinci oxidi"},
    {"Maść salicylowa", 1, "Unguentum Acidi salicylici"},
    {"Maść z hydrokortyzonem", 1, ""},
    {"Maść mocznikowa", 1, ""},
    {"Krem z mocznikiem 10%", 2, ""},
    {"Krem z metronidazolem", 2, "Cremor Metronidazoli"},
    {"Puder płynny cynkowy", 3, "Zawiesina cynkowa"},
    {"Zasypka z talkiem i tlenkiem cynku", 3, ""},
    {"Spirytus salicylowy", 4, "Solutio Acidi salicylici spirituosa"},
    {"Spirytus kamforowy", 4, "Spiritus camphoratus"},
    {"Roztwór mentolowy", 4, ""},
    {"Roztwór resorcyny", 4, ""},
    {"Mieszanka tymiankowa", 5, "Mixtura Thymi"},
    {"Syrop z kodeiną", 5, ""},
    {"Mieszanka z wodorowęglanem sodu", 5, ""},
    {"Czopki z papaweryną", 6, "Suppositoria Papaverini"},
    {"Globulki z metronidazolem", 6, ""},
    {"Czopki glicerynowe", 6, "Suppositoria Glyceroli"},
    {"Krople do oczu z chloramfenikolem", 7, "Guttae ophthalmicae Chloramphenicoli"},
    {"Krople do uszu z lidokainą", 7, ""},
    {"Proszki z papaweryną", 8, ""},
    {"Proszki z wodorowęglanem sodu", 8, "Pulvis Natrii hydrogenocarbonatis"},
    {"Maść z nystatyną", 1, ""},
    // Starts with a capital Ż, which a search typed in lower case must still find.
    {"Żurawina w syropie", 5, "Sirupus Oxycocci"},
};

const char* const ointmentMaking =
    "Substancję czynną dokładnie utrzeć w moździerzu z niewielką ilością podłoża, następnie dodawać porcjami "
    "resztę podłoża, ucierając do uzyskania jednolitej maści.";
const char* const solutionMaking = "Substancje rozpuścić w rozpuszczalniku, przesączyć, uzupełnić do masy.";

const RecipeText recipes[] = {
    {1, "Maść borna 3%", ointmentMaking, "Na zmienioną chorobowo skórę 2–3 razy dziennie.",
     "Nie stosować u dzieci poniżej 3 lat ani na duże powierzchnie skóry.",
     {{1, "3,0", "", "subtilissime pulv."}, {2, "ad 100,0", "", ""}}},
    {1, "Maść borna z lanoliną", ointmentMaking, "Na skórę 2 razy dziennie.", "",
     {{1, "3,0", "", ""}, {12, "20,0", "", ""}, {2, "ad 100,0", "", ""}}},
    {1, "", ointmentMaking, "", "Wersja bez nazwy, dla porównania.",
     {{1, "5,0", "", ""}, {22, "ad 100,0", "", ""}}},
    {2, "Maść ichtiolowa 10%", "Ichtiol utrzeć z wazeliną do uzyskania jednolitej masy.",
     "Miejscowo na czyraki i stany zapalne skóry, pod opatrunek.", "Brudzi odzież.",
     {{3, "10,0", "", ""}, {2, "ad 100,0", "", ""}}},
    {2, "Maść ichtiolowa 20%", "Ichtiol utrzeć z wazeliną.", "Pod opatrunek, raz dziennie.", "",
     {{3, "20,0", "", ""}, {2, "ad 100,0", "", ""}}},
    {3, "Maść cynkowa", ointmentMaking, "Na podrażnioną skórę, kilka razy dziennie.", "",
     {{4, "10,0", "", "subtilissime pulv."}, {2, "ad 100,0", "", ""}}},
    {4, "Maść salicylowa 5%", ointmentMaking, "Na zrogowaciałe zmiany skóry raz dziennie.",
     "Nie stosować na błony śluzowe.", {{11, "5,0", "", ""}, {2, "ad 100,0", "", ""}}},
    {4, "Maść salicylowa 10%", ointmentMaking, "Na modzele, pod opatrunek.", "",
     {{11, "10,0", "", ""}, {2, "ad 100,0", "", ""}}},
    {5, "Maść z hydrokortyzonem 1%", ointmentMaking, "Cienką warstwą 1–2 razy dziennie, nie dłużej niż 7 dni.",
     "Nie stosować na twarz bez zalecenia lekarza.",
     {{14, "1,0", "", ""}, {13, "5,0", "do utarcia", ""}, {22, "ad 100,0", "", ""}}},
    {6, "Maść mocznikowa 10%", "Mocznik rozpuścić w wodzie, wprowadzić do euceryny.", "Na suchą skórę 2 razy dziennie.",
     "", {{28, "10,0", "", ""}, {6, "10,0", "", ""}, {22, "ad 100,0", "", ""}}},
    {7, "Krem z mocznikiem 10%", "Mocznik rozpuścić w wodzie i zemulgować z podłożem.", "Na suchą skórę.", "",
     {{28, "10,0", "", ""}, {6, "30,0", "", ""}, {22, "ad 100,0", "", ""}}},
    {8, "Krem z metronidazolem 1%", ointmentMaking, "Na zmiany trądzikowe 2 razy dziennie.", "Chronić przed światłem.",
     {{16, "1,0", "", ""}, {6, "20,0", "", ""}, {22, "ad 100,0", "", ""}}},
    {9, "Puder płynny", "Proszki utrzeć z gliceryną, dodać wodę, wstrząsać.", "Przed użyciem wstrząsnąć. Na skórę.",
     "Przechowywać w chłodnym miejscu.",
     {{4, "20,0", "", ""}, {5, "20,0", "", ""}, {7, "20,0", "", ""}, {6, "ad 100,0", "", ""}}},
    {10, "Zasypka", "Proszki przesiać i wymieszać.", "Na skórę kilka razy dziennie.", "",
     {{5, "80,0", "", ""}, {4, "20,0", "", ""}}},
    {11, "Spirytus salicylowy 2%", solutionMaking, "Na skórę 2 razy dziennie.", "",
     {{11, "2,0", "", ""}, {8, "ad 100,0", "", ""}}},
    {12, "Spirytus kamforowy 10%", solutionMaking, "Do nacierania skóry.", "Łatwopalny.",
     {{10, "10,0", "", ""}, {8, "ad 100,0", "", ""}}},
    {13, "Roztwór mentolowy 1%", solutionMaking, "Na swędzącą skórę.", "",
     {{9, "1,0", "", ""}, {8, "ad 100,0", "", ""}}},
    {14, "Roztwór resorcyny 2%", solutionMaking, "Do przemywania skóry trądzikowej.", "",
     {{21, "2,0", "", ""}, {6, "ad 100,0", "", ""}}},
    {15, "Mieszanka tymiankowa", "Wyciąg wymieszać z syropem i wodą.", "Dorośli: łyżka stołowa 3 razy dziennie.",
     "Wstrząsnąć przed użyciem.", {{24, "20,0", "", ""}, {25, "30,0", "", ""}, {6, "ad 150,0", "", ""}}},
    {16, "Syrop z kodeiną", "Fosforan kodeiny rozpuścić w wodzie, dodać syrop.", "Łyżeczka do 3 razy dziennie.",
     "Lek zawiera substancję odurzającą.",
     {{23, "0,15", "", "rozpuścić w wodzie"}, {6, "10,0", "", ""}, {25, "ad 100,0", "", ""}}},
    {17, "Mieszanka alkalizująca", solutionMaking, "Łyżka stołowa po posiłku.", "",
     {{27, "6,0", "", ""}, {6, "ad 200,0", "", ""}}},
    {18, "Czopki z papaweryną 0,04 g", "Metodą wylewania; papawerynę zawiesić w stopionym maśle kakaowym.",
     "1 czopek doodbytniczo 2 razy dziennie.", "Przechowywać w lodówce.",
     {{18, "0,04", "na 1 czopek", ""}, {26, "q.s.", "", "ad 2,0"}}},
    {19, "Globulki z metronidazolem 0,5 g", "Metodą wylewania.", "1 globulka dopochwowo na noc.", "",
     {{16, "0,5", "na 1 globulkę", ""}, {26, "q.s.", "", ""}}},
    {20, "Czopki glicerynowe", "Glicerynę zżelować i wylać do form.", "1 czopek doodbytniczo.", "",
     {{7, "2,0", "na 1 czopek", ""}}},
    {21, "Krople do oczu z chloramfenikolem 0,5%", "Przygotować w warunkach aseptycznych, sterylizować przez sączenie.",
     "1–2 krople do worka spojówkowego 3 razy dziennie.", "Zużyć w ciągu 7 dni od otwarcia.",
     {{30, "0,05", "", ""}, {19, "0,09", "", ""}, {6, "ad 10,0", "", ""}}},
    {22, "Krople do uszu z lidokainą", solutionMaking, "2–3 krople do ucha 2 razy dziennie.", "",
     {{29, "0,2", "", ""}, {7, "ad 10,0", "", ""}}},
    {23, "Proszki z papaweryną", "Proszki utrzeć i podzielić na 10 części.", "1 proszek 2 razy dziennie.", "",
     {{18, "0,04", "na 1 proszek", "M.f. pulv. D.t.d. No 10"}}},
    {24, "Proszki z wodorowęglanem sodu", "Podzielić na 20 części.", "1 proszek po jedzeniu.", "",
     {{27, "1,0", "na 1 proszek", ""}}},
    {25, "Maść z nystatyną", ointmentMaking, "Na zmiany 2 razy dziennie.", "",
     {{15, "1 000 000 j.m.", "", ""}, {13, "2,0", "", ""}, {2, "ad 20,0", "", ""}}},
    // A recipe without ingredients: its block of composition stays empty.
    {25, "Maść z nystatyną – wg wskazań lekarza", "Skład według recepty lekarskiej.", "", "", {}},
    {26, "Syrop żurawinowy", "Sok wymieszać z syropem, uzupełnić wodą.", "Łyżka stołowa 2 razy dziennie.", "",
     {{31, "30,0", "", "świeżo wyciśnięty"}, {25, "60,0", "", ""}, {6, "ad 100,0", "", ""}}},
};

QString text(const char* utf8)
{
    return QString::fromUtf8(utf8);
}

} // namespace

void RecipeWriter::write(TableWriter& writer)
{
    int id = 0;
    for (const char* group : groups)
        writer.insert(QStringLiteral("rec_group"), {++id, text(group)});

    id = 0;
    for (const auto& substance : substances)
        writer.insert(QStringLiteral("rec_substance"), {++id, text(substance[0]), text(substance[1])});

    id = 0;
    for (const DrugText& drug : drugs)
        writer.insert(QStringLiteral("rec_drug"), {++id, text(drug.name), drug.group, text(drug.synonym)});

    int recipeId = 0;
    int connectionId = 0;
    for (const RecipeText& recipe : recipes) {
        writer.insert(QStringLiteral("rec_recipe"), {++recipeId, recipe.drug, text(recipe.name),
                                                     text(recipe.realization), text(recipe.use),
                                                     text(recipe.comments)});
        for (const Ingredient& ingredient : recipe.ingredients) {
            if (ingredient.substance == 0)
                break;
            writer.insert(QStringLiteral("rec_connection"),
                          {++connectionId, recipeId, ingredient.substance, text(ingredient.amount),
                           text(ingredient.additional), text(ingredient.note)});
        }
    }
}
