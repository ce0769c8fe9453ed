#pragma once

#include "data/ConfigurationFile.h"
#include "platform/store/OpeningRules.h"

#include <QString>
#include <QStringList>
#include <optional>

/// Creating a practice: tables, files and workspace password.
namespace data {

inline const QString DatabaseFile = QStringLiteral("ZEP_ONE.MDB");
inline const QString WorkgroupFile = QStringLiteral("system.mdw");
inline const QString ConfigurationFile = QStringLiteral("ZEP_CFIG.CFG");
inline const QString ArchiveFolder = QStringLiteral("ARCHIVES");
inline const QString WorkspaceUser = QStringLiteral("ADMIN");

/// SQL that creates the tables, indexes and initial rows of a practice.
QString Schema();
/// The part of it that creates the tables of the feed, where they are missing.
QString FeedTables();
inline const QString KeptSettlements = QStringLiteral("ZEP settlements");
inline const QString OpenDeletions = QStringLiteral("ZEP deletions");

/// How every database of a practice is opened: the keys of `Presta`, `Recettes` and `Actes_suppr` are never reused, and
/// the indexes from which balances are read are checked. Tests shorten the patience.
store::OpeningRules& PracticeRules();

/// The eight characters that open the workgroup. Never stored.
QString BuildWorkspacePassword();

enum class TooltipLanguage { French, Arabic };

struct PracticeSetup {
    int accessCode = 0;     ///< as the user types it: even, from -32768 to 32766
    QStringList letterhead; ///< at most 16 lines; widths as LetterheadWidths
    TooltipLanguage language = TooltipLanguage::French;
};

/// Creates a data folder: database, workgroup, configuration, templates (existing ones are kept), ARCHIVES; readable by
/// the owner only. Other content of an existing folder stays.
///
/// The practice is created completely and synced, or not at all, even if the program is killed. Raises 58 when the
/// folder already contains a file of a practice, 5 when the access code or a line of the letterhead can't be stored, 75
/// or 76 when the folder or a file can't be created; all with a description for the user.
void CreatePractice(const QString& folder, const PracticeSetup& setup);

/// Creates the files in an existing folder that has none of them, except templates that the folder `kept` has.
void MakePracticeFiles(const QString& folder, const PracticeSetup& setup, const QString& kept = {});
/// The same with the content of a configuration file.
void MakePracticeFiles(const QString& folder, const QByteArray& configuration, const QString& kept = {});

/// Changes to a configuration; unset members stay as they are.
struct PracticeChange {
    std::optional<int> accessCode;
    std::optional<QStringList> letterhead; ///< all lines: missing ones become empty
    std::optional<TooltipLanguage> language;
};

/// Changes the configuration file; on failure it is unchanged. Raises 53 when it is missing, 5 as CreatePractice does,
/// 75 when it is too short or can't be written.
void ChangePractice(const QString& folder, const PracticeChange& change);

} // namespace data
