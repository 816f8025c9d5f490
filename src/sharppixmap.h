#pragma once

#include <QPixmap>
#include <QString>

// A picture of the program's resources for the screen it is shown on: on a
// screen scaled above 100 % the one drawn at twice the size ("name@2x"), so
// that it stays sharp, at the same size on the screen.
QPixmap sharpPixmap(const QString& resource);
