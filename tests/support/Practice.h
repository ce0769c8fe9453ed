#pragma once

#include "data/PaymentCode.h"
#include "platform/dao/Engine.h"

#include <QTemporaryDir>
#include <utility>
#include <vector>

namespace tests {

struct ActRow {
    QString day = "17/06/2008";
    dao::Value montant = 0.0;
    dao::Value flag_R = data::PaymentCode::NP;
    int num_patient = 1;
    int num_presta = 1;
    dao::Value HH = 0;
    dao::Value Type = "C";
    dao::Value Flag_H = 0;
};

struct ExpenseRow {
    QString day = "17/06/2008";
    double montant = 0;
    dao::Value objet = "Coton";
};

/// A small practice in its own folder: access code 6, letterhead, two services, one patient. Opened as by the program
/// after its code was accepted; the destructor resets the globals. "Today" is 17/06/2008.
class Practice {
public:
    Practice();
    ~Practice();

    QString Folder() const;
    QString File(const QString& name) const;
    /// Sets globals and handles as if the main window had opened this practice.
    void Open();

    dao::Key Act(const ActRow& act);
    dao::Key Expense(const ExpenseRow& expense);
    dao::Key Patient(const dao::Value& nom, const dao::Value& Prenom);
    dao::Key Service(const QString& denom, int ordre);
    dao::Key Appointment(const QString& day);

    using Row = std::vector<std::pair<const char*, dao::Value>>;
    dao::Key Add(const QString& table, const Row& row);
    /// Runs a statement as another program.
    void Write(const QString& statement);
    /// Deletes a row as another program.
    void Remove(const QString& table, dao::Key key);
    /// A field of the row with this key, read through a separate connection.
    dao::Value Stored(const QString& table, dao::Key key, const char* field);
    /// The first field of the first row of a statement.
    dao::Value Ask(const QString& statement);
    /// The rows of a statement, read through the same connection.
    dao::Recordset Rows(const QString& statement);

private:
    dao::Database Database();
    QTemporaryDir folder;
    dao::Workspace ownWorkspace;
    dao::Database ownDatabase;
};

} // namespace tests
