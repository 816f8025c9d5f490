#pragma once

#include <QByteArray>
#include <QString>

// Plain records of the database layer, each read by one part of the program.

struct DescriptionSection {
    QString caption;
    QString value;
};

struct DrugWarning {
    QString id;
    QString parentId;
    QString name;
    QString descr;
    bool isFood = false;
};

struct GifDecision {
    int id = 0;
    int versionId = 0;
    QString date;
    QString path;
    QString name;
    QString descr;
};

struct Advert {
    QString url;
    QString gid;
    QByteArray data;
    QString type;
};

struct Pharmacy {
    int id = 0;
    QString name;
    QString street;
    QString zip;
    QString city;
    QString phone;
    QString email;
    QString www;
};

struct PharmacyOpenHoursType {
    QString name;
    QString namePl;
};

struct PharmacyOpenHours {
    int typeId = 0;
    QString startHour;
    QString endHour;
};

struct RecipeGroup {
    int id = 0;
    QString name;
};

struct RecipeDrug {
    int id = 0;
    QString name;
    int groupId = 0;
    QString synonym;
    QString substances;
    int conId = 0;
};

struct Recipe {
    int id = 0;
    QString drugName;
    QString name;
    QString realization;
    QString use;
    QString comments;
};

struct RecipeSubstance {
    int id = 0;
    QString name;
    QString effect;
    QString amount;
    QString additional;
    QString note;
};
