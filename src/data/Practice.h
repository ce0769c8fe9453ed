#pragma once

#include "data/ConfigurationFile.h"
#include "platform/dao/Engine.h"

#include <QString>
#include <QStringList>
#include <optional>

/// What makes an empty practice: its tables, its files and the password of its workspace.
namespace data {

inline const QString DatabaseFile = QStringLiteral("ZEP_ONE.MDB");
inline const QString WorkgroupFile = QStringLiteral("system.mdw");
inline const QString ConfigurationFile = QStringLiteral("ZEP_CFIG.CFG");
inline const QString ArchiveFolder = QStringLiteral("ARCHIVES");
inline const QString WorkspaceUser = QStringLiteral("ADMIN");

/// The statements that make the tables of a practice, its indexes and the rows that must exist.
QString Schema();

/// The tables whose rows the program adds, with the columns that hold their keys. To be given to the engine before a
/// practice is opened, so that an older one is brought up to date.
QList<dao::KeyedTable> KeyedTables();

/// The indexes from which balances are read. For the engine, as well.
QList<dao::SummedIndex> SummedIndexes();

/// The eight characters that open the workgroup. Built when asked for and written nowhere.
QString BuildWorkspacePassword();

enum class TooltipLanguage { French, Arabic };

struct PracticeSetup {
    int accessCode = 0;     ///< as the user types it: even, from -32768 to 32766
    QStringList letterhead; ///< at most 16 lines; widths as LetterheadWidths
    TooltipLanguage language = TooltipLanguage::French;
};

/// Makes the data folder of a new practice: database, workgroup, configuration, report templates (one that is there
/// already stays as it is) and the folder for the archive copy, all of them open to their owner alone. The folder is
/// made when it isn't there; when it holds other things these stay.
///
/// The practice appears whole and written to the disk, or not at all, also when the program is killed. Raises 58 when
/// the folder holds a file of a practice already, 5 when the access code or a line of the letterhead can't be stored,
/// 75 or 76 when the folder or a file can't be made; all with a description for the user.
void CreatePractice(const QString& folder, const PracticeSetup& setup);

/// The files alone, in a folder that is there and empty of them; a template that the folder `kept` holds isn't made.
void MakePracticeFiles(const QString& folder, const PracticeSetup& setup, const QString& kept = {});

/// What is to be changed of a practice; what isn't given stays as it is.
struct PracticeChange {
    std::optional<int> accessCode;
    std::optional<QStringList> letterhead; ///< the whole of it: lines that aren't given become empty
    std::optional<TooltipLanguage> language;
};

/// Changes the configuration of a practice: the file as it was or the new one, whatever happens. Raises 53 when there
/// is none, 5 as CreatePractice does, 75 when it is too short or can't be written.
void ChangePractice(const QString& folder, const PracticeChange& change);

} // namespace data
