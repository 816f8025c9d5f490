#pragma once

#include <QString>

// Names under which the program keeps its values in the user's settings store
// (organisation "Corvane", application "Quillard"). Each writer syncs at once.
namespace SettingsKeys {
inline const QString appKey = QStringLiteral("app_key");
inline const QString seenRodoInfo = QStringLiteral("seen_RODO_info");
inline const QString seenShortcutsPage = QStringLiteral("seen_shortcuts_page");
inline const QString userInfoJson = QStringLiteral("user_info_json");
inline const QString pharmacyInfoJson = QStringLiteral("pharmacy_info_json");
inline const QString shortcuts = QStringLiteral("shortcuts");
inline const QString shortcutKey = QStringLiteral("Shortcut");
inline const QString shortcutDescription = QStringLiteral("Description");
inline const QString refreshShortcuts = QStringLiteral("refresh_shortcuts");
inline const QString drugPageLeftColumn = QStringLiteral("drug_page_left_column");
} // namespace SettingsKeys
