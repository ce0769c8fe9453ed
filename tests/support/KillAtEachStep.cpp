#include "support/KillAtEachStep.h"

#include "core/globals.h"
#include "core/opening.h"
#include "platform/dao/Engine.h"
#include "platform/store/DatabaseReader.h"
#include "support/ChildProcess.h"
#include "support/DeadlySteps.h"
#include "support/Printing.h"
#include "support/Rounds.h"
#include "support/Rows.h"
#include "support/ScriptedDesk.h"

#include <QDirIterator>
#include <QRegularExpression>
#include <QTemporaryDir>

#include <filesystem>
#include <map>

namespace tests {
namespace {

namespace files = std::filesystem;

constexpr std::size_t KillsInShortForm = 15;
constexpr std::size_t KillsInLongForm = 1000; // enough for every moment, but for those of long writes

/// Copies the content of a folder with the times of its files.
void CopyContent(const files::path& from, const files::path& to)
{
    files::copy(from, to, files::copy_options::recursive);
    for (const files::directory_entry& entry : files::recursive_directory_iterator(from))
        if (entry.is_regular_file())
            files::last_write_time(to / files::relative(entry.path(), from), entry.last_write_time());
}

void PutBack(const files::path& content, const files::path& folder)
{
    for (const files::directory_entry& entry : files::directory_iterator(folder))
        files::remove_all(entry.path());
    CopyContent(content, folder);
}

/// The files in and below its folder whose path matches.
QStringList FilesOf(const Play& play, const char* pattern)
{
    QStringList found;
    QDirIterator entries(play.folder, QDir::Files | QDir::Hidden, QDirIterator::Subdirectories);
    while (entries.hasNext())
        found << entries.next();
    if (!play.mayStay.isEmpty())
        found.removeIf([&](const QString& file) { return file.contains(play.mayStay); });
    return found.filter(QRegularExpression(pattern));
}

constexpr const char* Database = "^((?!\\.part).)*\\.MDB$";
constexpr const char* Partial = "\\.part|-journal$";

/// Works in a process of its own until the deadly moment, if any; returns the moments and the number of reported parts.
std::pair<std::vector<Moment>, int> WorkUntil(int deadly, const Play& play)
{
    struct Report {
        bool isPart;
        Moment moment;
    };
    ChildProcess child([&](Reports& reports) {
        DieAtMoment(deadly);
        play.work([&reports] {
            EndPart();
            reports.Send(Report{true, {}});
        });
        EndPart();
        EXPECT_EQ(SyncFaults(), QStringList());
        if (deadly < 0)
            for (const Moment& moment : std::vector(Moments()))
                reports.Send(Report{false, moment});
    });
    std::pair<std::vector<Moment>, int> seen;
    while (const auto report = child.Next<Report>()) {
        if (report->isPart)
            ++seen.second;
        else
            seen.first.push_back(report->moment);
    }
    if (deadly < 0)
        child.Wait();
    else
        EXPECT_TRUE(child.Kill()) << "it has passed the deadly moment";
    return seen;
}

std::vector<int> DeadlyMoments(const std::vector<Moment>& moments)
{
    std::map<std::pair<int, Moment::Kind>, std::vector<int>> groups;
    for (int moment = 0; moment < static_cast<int>(moments.size()); ++moment)
        groups[{moments[moment].part, moments[moment].kind}].push_back(moment);
    const std::size_t share =
        std::max<std::size_t>(1, (IsLongForm() ? KillsInLongForm : KillsInShortForm) / groups.size());
    std::vector<int> deadly;
    for (const auto& [partAndKind, group] : groups) {
        const std::size_t wanted = partAndKind.second == Moment::AfterName ? 3 * share : share;
        const std::size_t kills = std::min(wanted, group.size());
        for (std::size_t kill = 0; kill < kills; ++kill)
            deadly.push_back(group[(2 * kill + 1) * group.size() / (2 * kills)]);
    }
    return deadly;
}

} // namespace

void KillAtEachStep(const Play& play)
{
    const QTemporaryDir kept;
    const files::path folder = play.folder.toStdString();
    const files::path content = kept.path().toStdString();
    CopyContent(folder, content);
    const QString before = play.state();
    PutBack(content, folder);
    const auto [moments, parts] = WorkUntil(-1, play);
    const QString end = play.state();
    ASSERT_NE(end, before);
    const auto allowed = [&, last = parts](int reported) {
        return play.allowed ? play.allowed(reported)
                            : QStringList{end, reported > 0 && reported == last ? end : before};
    };
    ASSERT_TRUE(allowed(0).contains(before)) << before.toStdString();
    ASSERT_TRUE(allowed(parts).contains(end)) << end.toStdString();
    ASSERT_EQ(FilesOf(play, Partial), QStringList());

    for (const int deadly : DeadlyMoments(moments)) {
        SCOPED_TRACE(testing::Message() << "killed at " << deadly << " of " << moments.size());
        PutBack(content, folder);
        const int reported = WorkUntil(deadly, play).second;
        const QString state = play.state();
        ASSERT_TRUE(allowed(reported).contains(state))
            << state.toStdString() << "\nafter " << reported << " reported parts";
        for (const QString& database : FilesOf(play, Database))
            ASSERT_EQ(store::CheckDatabase(database), QStringList()) << database.toStdString();
        if (play.check)
            play.check(state);
        play.work([] {});
        ASSERT_EQ(play.state(), end) << "played again";
        ASSERT_EQ(FilesOf(play, Partial), QStringList()) << "for good";
        if (testing::Test::HasFailure())
            return;
    }
    PutBack(content, folder);
}

void KilledPractice::Close()
{
    practice.Open();
    core::TheDatabase.Close();
}

QString KilledPractice::Found(const QString& statement)
{
    const ScriptedDesk desk; // no message is expected
    core::OpenDataFiles();
    const QStringList rows = RowsOf(core::TheDatabase.OpenRecordset(statement));
    core::TheDatabase.Close();
    return rows.join('\n');
}

void KilledPractice::Kill(const std::function<void(const Play::Done&)>& work, const QString& statement,
                          const std::function<QStringList(int)>& allowed)
{
    Close();
    KillAtEachStep(
        {.folder = practice.Folder(), .work = work, .state = [&] { return Found(statement); }, .allowed = allowed});
}

} // namespace tests
