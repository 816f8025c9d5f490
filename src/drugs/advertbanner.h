#pragma once

#include "utils/advertprovider.h"

class QLabel;
class QMouseEvent;
class QWidget;

// The banner label that the drug page and the recipes page both carry: what
// it shows for the provider's banner and where a click on it leads.
namespace AdvertBanner {

// Shows the banner that the provider announced on `label` of `page`. The
// label's cursor and its "gid" and "url" properties keep where a click leads.
void show(QWidget* page, QLabel* label, AdvertType advertType);

// A mouse press on the label: selects the banner's drug or opens its web
// address. False when the press is left to the label (a banner without a link).
bool handlePress(QLabel* label, QMouseEvent* event);

} // namespace AdvertBanner
