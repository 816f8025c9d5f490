#pragma once

#include <QString>

#include <array>

// A program version of four numbers, most significant first. "1.6.5" reads as
// 1.6.5.0; a part that is no number counts as 0 and parts past the fourth are
// ignored, so any text gives a version.
struct VersionNumber {
    explicit VersionNumber(const QString& text = QString());

    bool operator>=(const VersionNumber& other) const;

    std::array<quint32, 4> parts {};
};
