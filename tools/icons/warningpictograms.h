#pragma once

#include <QImage>

// The pictograms of the special and food warnings, one per warning id of the
// database's set.
namespace WarningPictograms {

constexpr int firstId = 14478650;
constexpr int lastId = 14478716;

// The pictogram of a warning id between firstId and lastId.
QImage draw(int id);

} // namespace WarningPictograms
