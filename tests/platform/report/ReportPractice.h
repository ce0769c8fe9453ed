#pragma once

#include "platform/dao/Engine.h"
#include "platform/pages/PageLayout.h"

#include <QTemporaryDir>
#include <initializer_list>
#include <utility>

namespace tests {

/// A database with the tables of a practice, for reports to read: three patients, three services, letterhead and
/// headings.
class ReportPractice {
public:
    using Cells = std::initializer_list<std::pair<const char*, dao::Value>>;

    ReportPractice();

    QString Path() const { return folder.filePath("ZEP_ONE.MDB"); }
    QString Folder() const { return folder.path(); }
    dao::Database& Database() { return database; }
    pages::Source Source(const QString& selectionFormula = {}) const;
    /// The path of a template of the program.
    static QString Template(const QString& name);
    /// Writes a template into the folder; returns its path.
    QString WriteTemplate(const QByteArray& text, const QString& name = "ESSAI.RPT");
    /// The content of a file of the folder.
    QByteArray Read(const QString& name) const;

    dao::Key Add(const QString& table, Cells cells);
    void SetTexts(Cells cells);
    /// Adds acts with all codes, slots, services and patients, each with its row in Prov; `withReference` fills
    /// Prov.Mt.
    void AddActs(int count, bool withReference);
    void AddExpenses(int count);

    /// Reads a template and its rows, without faults, and lays them out. The print date is 17/06/2008.
    pages::PageLayout LayOut(const QString& templatePath, const QString& selectionFormula = {});

private:
    QTemporaryDir folder;
    dao::Engine engine;
    dao::Workspace workspace;
    dao::Database database;
};

} // namespace tests
