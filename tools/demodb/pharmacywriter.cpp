#include "pharmacywriter.h"

#include "demorandom.h"
#include "tablewriter.h"

#include <QStringList>

namespace {

struct City {
    const char* name;
    const char* zipPrefix;
    const char* phonePrefix;
};

const City cities[] = {
    {"Warszawa", "00", "22"},     {"Kraków", "31", "12"},       {"Łódź", "90", "42"},
    {"Wrocław", "50", "71"},      {"Poznań", "60", "61"},       {"Gdańsk", "80", "58"},
    {"Szczecin", "70", "91"},     {"Bydgoszcz", "85", "52"},    {"Lublin", "20", "81"},
    {"Białystok", "15", "85"},    {"Katowice", "40", "32"},     {"Gdynia", "81", "58"},
    {"Częstochowa", "42", "34"},  {"Radom", "26", "48"},        {"Toruń", "87", "56"},
    {"Kielce", "25", "41"},       {"Rzeszów", "35", "17"},      {"Gliwice", "44", "32"},
    {"Olsztyn", "10", "89"},      {"Bielsko-Biała", "43", "33"}, {"Opole", "45", "77"},
    {"Zielona Góra", "65", "68"}, {"Płock", "09", "24"},        {"Tarnów", "33", "14"},
    {"Koszalin", "75", "94"},     {"Kalisz", "62", "62"},       {"Legnica", "59", "76"},
    {"Łomża", "18", "86"},        {"Świdnica", "58", "74"},     {"Żyrardów", "96", "46"},
};

const char* const streets[] = {
    "ul. Marszałkowska",   "ul. Długa",           "al. Jana Pawła II", "ul. Piotrkowska",   "ul. Świętokrzyska",
    "ul. Mickiewicza",     "ul. Słowackiego",     "ul. Kościuszki",    "ul. Sienkiewicza",  "ul. Kolejowa",
    "ul. Polna",           "ul. Leśna",           "ul. Ogrodowa",      "ul. Szkolna",       "ul. Lipowa",
    "pl. Wolności",        "ul. 3 Maja",          "ul. Żeromskiego",   "ul. Grunwaldzka",   "ul. Armii Krajowej",
    "ul. Wojska Polskiego", "ul. Reymonta",       "ul. Chopina",       "al. Niepodległości", "Rynek",
};

const char* const names[] = {
    "Apteka Pod Orłem",     "Apteka Centralna",  "Apteka Zdrowie",      "Apteka Pod Lipami", "Apteka Rodzinna",
    "Apteka Słoneczna",     "Apteka Przy Rynku", "Apteka Pod Koroną",   "Apteka Nova",       "Apteka Melisa",
    "Apteka Pod Wagą",      "Apteka Miejska",    "Apteka Dbam o Zdrowie", "Apteka Arnika",   "Apteka Rumianek",
    "Apteka Pod Aniołem",   "Apteka Świętego Jana", "Apteka Familijna", "Apteka Na Rogu",    "Apteka Źródło",
};

template <typename T, int N>
constexpr int length(const T (&)[N])
{
    return N;
}

QString text(const char* utf8)
{
    return QString::fromUtf8(utf8);
}

QString phoneNumber(DemoRandom& random, const char* prefix)
{
    return QStringLiteral("%1 %2 %3 %4")
        .arg(text(prefix))
        .arg(random.between(100, 999))
        .arg(random.between(10, 99))
        .arg(random.between(10, 99));
}

} // namespace

void PharmacyWriter::write(TableWriter& writer, DemoRandom& random, int count)
{
    const QStringList english = {QStringLiteral("Monday"),   QStringLiteral("Tuesday"), QStringLiteral("Wednesday"),
                                 QStringLiteral("Thursday"), QStringLiteral("Friday"),  QStringLiteral("Saturday"),
                                 QStringLiteral("Sunday")};
    const QStringList polish = {QStringLiteral("Poniedziałek"), QStringLiteral("Wtorek"), QStringLiteral("Środa"),
                                QStringLiteral("Czwartek"),     QStringLiteral("Piątek"), QStringLiteral("Sobota"),
                                QStringLiteral("Niedziela")};
    for (int day = 0; day < english.size(); ++day)
        writer.insert(QStringLiteral("pharmacy_open_hours_type"), {day + 1, english.at(day), polish.at(day)});

    // Phone lists use every separator the look-up splits on.
    const QStringList separators = {QStringLiteral(", "), QStringLiteral(";"), QStringLiteral(":"),
                                    QStringLiteral("\t"), QStringLiteral(",")};
    for (int id = 1; id <= count; ++id) {
        const City& city = cities[random.bounded(length(cities))];
        const QString name = text(names[random.bounded(length(names))]);
        // Each draw in a statement of its own: the order of operands of "+" is
        // unspecified, and one seed must give one database.
        const QString streetName = text(streets[random.bounded(length(streets))]);
        const int house = random.between(1, 160);
        const QString flat = random.chance(20) ? QStringLiteral("/2") : QString();
        const QString street = streetName + QLatin1Char(' ') + QString::number(house) + flat;
        const int zipSuffix = random.between(1, 999);
        const QString zip = text(city.zipPrefix) + QStringLiteral("-")
            + QString::number(zipSuffix).rightJustified(3, QLatin1Char('0'));
        QString phone = phoneNumber(random, city.phonePrefix);
        if (id == 1 || random.chance(40)) {
            const QString separator = separators.at(id == 1 ? 0 : random.bounded(separators.size()));
            const QString mobile = QStringLiteral("%1 %2 %3")
                                       .arg(random.between(500, 899))
                                       .arg(random.between(100, 999))
                                       .arg(random.between(100, 999));
            phone += separator + mobile;
        }
        if (id == 1)
            phone += QStringLiteral(";") + phoneNumber(random, city.phonePrefix);
        const QString slug = QStringLiteral("apteka%1").arg(id);
        const QString email = random.chance(85) ? slug + QStringLiteral("@apteki-demo.pl") : QString();
        const QString www = random.chance(60) ? QStringLiteral("www.apteki-demo.pl/") + slug : QString();
        writer.insert(QStringLiteral("pharmacy"), {id, name, street, zip, text(city.name), phone, email, www});

        // Weekdays always; Saturday mostly, Sunday rarely; the first one is
        // open every day so that all seven types show.
        const bool allDay = id == 2 || random.chance(5);
        for (int day = 1; day <= 7; ++day) {
            if (id != 1 && !allDay && ((day == 6 && random.chance(25)) || (day == 7 && !random.chance(15))))
                continue;
            QString start = day >= 6 ? QStringLiteral("09:00") : QStringLiteral("08:00");
            QString end = day == 7 ? QStringLiteral("14:00") : day == 6 ? QStringLiteral("15:00") : QStringLiteral("20:00");
            if (allDay) {
                start = QStringLiteral("00:00");
                end = QStringLiteral("23:59");
            } else if (random.chance(30)) {
                start = QStringLiteral("7:30");
            }
            writer.insert(QStringLiteral("pharmacy_open_hours"), {id, day, start, end});
        }
    }

    writer.insert(QStringLiteral("pharmacy"),
                  {pharmacyWithoutHours, QStringLiteral("Apteka Zamkowa Demo"), QStringLiteral("ul. Zamkowa 1"),
                   QStringLiteral("62-035"), QStringLiteral("Kórnik"), QStringLiteral("61 817 00 01"), QString(),
                   QString()});
}
