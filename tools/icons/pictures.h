#pragma once

#include <QImage>

// Every picture of the program, drawn from scratch. Each function returns the
// image at the size the program shows it.
namespace Pictures {

// The program's mark and brand pictures.
QImage tray();
QImage splash();
QImage bannerCorvane();
QImage contact();

// Illustrations of empty states.
QImage findDrug();
QImage noRecipe();
QImage placeholderDrugImage();

// Button and label pictograms.
QImage trash();
QImage notificationIcon();
QImage print();
QImage image();
QImage pdfIcon();
QImage zoomIn();
QImage zoomOut();

} // namespace Pictures
