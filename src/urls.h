#pragma once

#include "buildconfig.h"

#include <QString>

// Every service address of the program. The bases come from the build's cache
// variables, so that one change of base changes every endpoint behind it.

static const QString desktopApiUrl = QStringLiteral(QUILLARD_DESKTOP_API_URL);
static const QString mobileFileUrl = QStringLiteral(QUILLARD_MOBILE_FILE_URL);
static const QString imagesUrl = QStringLiteral(QUILLARD_IMAGES_URL);

static const QString appVersionUrl = desktopApiUrl + QStringLiteral("/app_version.php?a=version");
static const QString appListUrl = desktopApiUrl + QStringLiteral("/app_version.php?a=list");
static const QString appFileUrl = desktopApiUrl + QStringLiteral("/app_version.php?a=file&f=");
static const QString newDrugImageUrl = desktopApiUrl + QStringLiteral("/new_drug_image.php");
static const QString userPharmacyUrl = desktopApiUrl + QStringLiteral("/registration/user_pharmacy.php");
static const QString updateUserAdditionalUrl = desktopApiUrl + QStringLiteral("/registration/update_user_additional.php");
static const QString updateUserPharmacyUrl = desktopApiUrl + QStringLiteral("/registration/update_user_pharmacy.php");
static const QString usageScannedEanUrl = desktopApiUrl + QStringLiteral("/usage/scanned_ean.php");
static const QString usageSearchUrl = desktopApiUrl + QStringLiteral("/usage/search.php");
static const QString usageClickUrl = desktopApiUrl + QStringLiteral("/usage/click.php");
static const QString usageRecipeGroupUrl = desktopApiUrl + QStringLiteral("/usage/recipe_group.php");
static const QString usageRecipeDrugUrl = desktopApiUrl + QStringLiteral("/usage/recipe_drug.php");
static const QString usageSubstituteViewUrl = desktopApiUrl + QStringLiteral("/usage/substitute_view.php");
static const QString usageSubstituteClickUrl = desktopApiUrl + QStringLiteral("/usage/substitute_click.php");

static const QString dbInfoUrl = mobileFileUrl + QStringLiteral("/check.php?a=info&app=quillard&kind=desktop&version=2_file_header&db=");
static const QString dbRefundInfoUrl = mobileFileUrl + QStringLiteral("/check.php?a=info_refund&app=quillard&kind=desktop&version=2_file_header&db=");
static const QString dbGetUrl = mobileFileUrl + QStringLiteral("/check.php?a=get&app=quillard_desktop&kind=windows&version=2_file_header&db=");
static const QString drugImageUrl = mobileFileUrl + QStringLiteral("/check.php?a=getImage&app=quillard&kind=desktop&id=");

// Addresses that stand outside the service bases.
static const QString websiteUrl = QStringLiteral(QUILLARD_WEBSITE_URL);
static const QString leafletServiceUrl = QStringLiteral(QUILLARD_LEAFLET_URL);
static const QString fullChplUrl = QStringLiteral(QUILLARD_CHPL_URL);
static const QString attachmentsUrl = QStringLiteral(QUILLARD_ATTACHMENTS_URL);
static const QString sentryDsn = QStringLiteral(QUILLARD_SENTRY_DSN);
static const QString organizationDomain = QStringLiteral(QUILLARD_ORGANIZATION_DOMAIN);
static const QString programVersion = QStringLiteral(QUILLARD_VERSION);
