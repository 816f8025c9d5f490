#include "descriptiontexts.h"

#include "demorandom.h"

#include <QHash>

namespace {

// Two variants per title; %1 stands for the substance, %2 for the strength.
const char* const templates[][3] = {
    {"Bezpieczeństwo stosowania",
     "<p>Przed zastosowaniem leku zawierającego <b>%1</b> należy poinformować lekarza o wszystkich przyjmowanych "
     "lekach. U pacjentów z chorobami wątroby i nerek leczenie prowadzi się pod kontrolą lekarza.</p>",
     "<p>Stosowanie u kierowców: <i>możliwe po ocenie indywidualnej reakcji</i>.</p><p>Stosowanie u osób "
     "starszych: zwykle nie jest konieczna zmiana dawki %2.</p>"},
    {"Ciąża i laktacja",
     "<p>Kategoria C. Stosować w ciąży wyłącznie wtedy, gdy jest to bezwzględnie konieczne.</p><p>%1 przenika "
     "do mleka kobiecego w niewielkich ilościach.</p>",
     "<p>Brak wystarczających danych dotyczących stosowania w okresie ciąży. W czasie karmienia piersią "
     "należy rozważyć przerwanie karmienia.</p>"},
    {"Dawkowanie",
     "<p><b>Dorośli:</b> %2 raz na dobę, o stałej porze.</p><p><b>Dzieci:</b> nie ustalono bezpieczeństwa "
     "stosowania.</p>",
     "<p>Zazwyczaj %2 dwa razy na dobę. Maksymalna dawka dobowa zależy od wskazania i stanu pacjenta.</p><ul>"
     "<li>niewydolność nerek: zmniejszyć dawkę o połowę</li><li>niewydolność wątroby: nie stosować</li></ul>"},
    {"Działanie",
     "<p>%1 działa wybiórczo na receptory w tkankach docelowych; efekt pojawia się po 1–2 godzinach i "
     "utrzymuje się do 24 godzin.</p>",
     "<p>Mechanizm działania polega na hamowaniu enzymu odpowiedzialnego za powstawanie mediatorów procesu "
     "chorobowego.</p>"},
    {"Działanie i zastosowanie",
     "<p>Lek zawiera <b>%1</b>. Stosowany w leczeniu przewlekłym, wyłącznie na zlecenie lekarza.</p>",
     "<p>%1 w dawce %2 jest stosowany(-a) zarówno w monoterapii, jak i w skojarzeniu z innymi lekami.</p>"},
    {"Działania niepożądane",
     "<p><b>Często:</b> ból głowy, nudności, zawroty głowy.</p><p><b>Rzadko:</b> reakcje nadwrażliwości, "
     "wysypka.</p>",
     "<ul><li>bardzo często: zmęczenie</li><li>często: zaburzenia żołądkowo-jelitowe</li><li>bardzo rzadko: "
     "obrzęk naczynioruchowy</li></ul>"},
    {"Interakcje",
     "<p>Inhibitory CYP3A4 (np. ketokonazol, klarytromycyna) zwiększają stężenie %1 w osoczu.</p>",
     "<p>Nie łączyć z alkoholem ani z lekami o działaniu depresyjnym na OUN. Ostrożnie z lekami "
     "przeciwzakrzepowymi.</p>"},
    {"Opis",
     "<p>Produkt leczniczy zawierający %1 w dawce %2. <i>Dane przykładowe (DEMO).</i></p>",
     "<p>%1 – opis produktu przygotowany na potrzeby demonstracji programu.</p>"},
    {"Ostrzeżenia specjalne / Środki ostrożności",
     "<p>Ostrożnie stosować u pacjentów z chorobami układu krążenia. Przed zabiegiem chirurgicznym "
     "poinformować lekarza o przyjmowaniu leku.</p>",
     "<p>Lek zawiera laktozę jednowodną. Pacjenci z rzadko występującą dziedziczną nietolerancją galaktozy nie "
     "powinni go przyjmować.</p>"},
    {"Przeciwwskazania",
     "<ul><li>nadwrażliwość na %1 lub substancje pomocnicze</li><li>ciężka niewydolność wątroby</li>"
     "<li>ciąża i karmienie piersią</li></ul>",
     "<p>Nadwrażliwość na substancję czynną. Ciężka niewydolność nerek (klirens kreatyniny &lt; 30 ml/min).</p>"},
    {"Przedawkowanie",
     "<p>Objawy: senność, spadek ciśnienia, tachykardia. Leczenie objawowe; w ciągu 1 godziny można podać "
     "węgiel aktywowany.</p>",
     "<p>Brak swoistej odtrutki. Należy monitorować czynności życiowe pacjenta.</p>"},
    {"Skład",
     "<p>1 tabletka zawiera %2 substancji czynnej (%1).</p><p>Substancje pomocnicze: laktoza jednowodna, "
     "celuloza mikrokrystaliczna, magnezu stearynian.</p>",
     "<p>Substancja czynna: %1 – %2.</p>"},
    {"Sposób stosowania",
     "<p>Połykać w całości, popijając szklanką wody, niezależnie od posiłków.</p>",
     "<p>Przyjmować doustnie, w trakcie posiłku lub bezpośrednio po nim.</p>"},
    {"Uwagi",
     "<p>Informacje przykładowe, wygenerowane dla bazy demonstracyjnej; nie stanowią porady medycznej.</p>",
     "<p>Przechowywać w miejscu niewidocznym i niedostępnym dla dzieci.</p>"},
    {"Właściwości",
     "<p>Po podaniu doustnym %1 wchłania się szybko; maksymalne stężenie osiąga po 2–4 godzinach. Okres "
     "półtrwania wynosi około 12 godzin.</p>",
     "<p>Dostępność biologiczna około 60%. Wydalany głównie z moczem.</p>"},
    {"Wskazania",
     "<p>Leczenie objawowe schorzeń, w których wskazane jest zastosowanie %1.</p>",
     "<ul><li>leczenie przewlekłe</li><li>zapobieganie nawrotom</li></ul>"},
    {"Zalecenia do stosowania",
     "<p>Nie przekraczać zalecanej dawki. Jeżeli objawy nie ustępują, należy skonsultować się z lekarzem.</p>",
     "<p>Pominiętą dawkę przyjąć jak najszybciej; nie stosować dawki podwójnej.</p>"},
    {"Zastosowanie",
     "<p>%1 stosuje się w leczeniu przewlekłym u dorosłych.</p>",
     "<p>Zastosowanie: wg wskazań zarejestrowanych w ChPL (%2).</p>"},
};

} // namespace

const QStringList& DescriptionTexts::titles()
{
    static const QStringList all = [] {
        QStringList list;
        for (const auto& entry : templates)
            list.append(QString::fromUtf8(entry[0]));
        return list;
    }();
    return all;
}

QString DescriptionTexts::section(const QString& title, const QString& substance, const QString& dose,
                                  DemoRandom& random)
{
    const int index = titles().indexOf(title);
    if (index < 0)
        return {};
    // Placeholders are replaced by hand: a variant may use one of them or none.
    QString text = QString::fromUtf8(templates[index][1 + random.bounded(2)]);
    text.replace(QLatin1String("%1"), substance);
    text.replace(QLatin1String("%2"), dose);
    return text;
}
