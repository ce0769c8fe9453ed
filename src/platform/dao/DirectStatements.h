#pragma once

#include "platform/dao/Connection.h"
#include "platform/dao/Database.h"

#include <string>

namespace dao {

/// Statements in SQLite's own language on an open database and temporary tables, for work on many rows at once.
///
/// A full disk (61) during a statement over temporary tables is that of the temporary files: the error names their
/// folder.
class DirectStatements {
public:
    explicit DirectStatements(const Database& target);

    /// For temporary tables, and "begin", "commit" around selects that are to see one moment. Returns the number of
    /// rows changed.
    int Run(const std::string& sql) const;
    RepeatedStatement Prepare(const std::string& sql) const;
    void Run(RepeatedStatement& repeated) const;
    /// Ends a transaction begun with Run.
    void RollBackIfOpen() const;

    /// Changes the database; call within a Transaction. Returns the number of rows changed.
    int Change(const std::string& sql) const;

    /// Valid until the next statement is started.
    Rows Select(const std::string& sql, std::initializer_list<Value> parameters = {}) const;
    /// The first column of the first row.
    qint64 WholeNumber(const std::string& select) const;

    /// Within a transaction that has read: changes whenever another program has committed something.
    quint32 CommitsOfOthers() const;

private:
    std::shared_ptr<Connection> connection;
};

} // namespace dao
