#pragma once

#include "platform/dao/RowSet.h"

#include <optional>

namespace dao {

/// Writable rows of one table: the current row, and the row being added or edited. WholeSet and ListedSet define the
/// members and their order.
class TableSet : public RowSet {
public:
    TableSet(std::shared_ptr<Connection> opened, Table& over);
    ~TableSet() override { TableSet::Close(); }

    void MoveFirst() final;
    void MoveNext() final;
    void MoveLast() final;
    bool IsEOF() const final { return isAtEnd; }
    void FindFirst(Key sought) final;
    bool NoMatch() const final { return noMatch; }

    void Write(int column, const Value& value) final;
    void AddNew() final;
    void Edit() final;
    void Update() final;
    void CancelUpdate() final;
    void Delete() final;
    void LockEdits(bool pessimistic) final { locksEdits = pessimistic; }
    Key LastKey() const final;
    void Close() noexcept override;

protected:
    virtual bool HasMembers() const = 0;
    virtual void GoToFirst() = 0;
    virtual void GoToNext() = 0;
    virtual void GoToLast() = 0;
    /// Goes to the member with this key; false if there is none.
    virtual bool GoToKey(qint64 sought) = 0;
    /// Called when a row was added through the set, or the current one deleted.
    virtual void NoteAdded(qint64 added) = 0;
    virtual void NoteDeleted() = 0;

    qint64 CurrentKey() const { return key; }

    /// Makes a row current: where it is cached, and the data version of its values.
    void SetCurrent(qint64 rowKey, const RowStore& store, std::size_t row, const DataVersion& version);
    void SetDeleted(qint64 rowKey);
    void SetEnd();
    /// Makes the current row of a select (key, then all columns) the current one.
    void TakeRow(const Rows& read);
    /// Reads a row and makes it current; false, without a change, if it doesn't exist.
    bool ReadRow(qint64 rowKey);

    Table& table;

private:
    struct Pending {
        bool adds = false;
        std::vector<int> columns;  ///< written so far
        std::vector<Value> values; ///< converted for storage
    };

    const Value* PendingValue(int column) const override;
    StoredValue Current(int column) override;
    void RequireMembers() const;
    void RequireRow() const;
    void RequireEditable() const;
    void RequirePending() const;
    void ChangeCurrent(const std::string& sql, const std::vector<Value>& parameters);
    void Revalidate();
    void DropPending() noexcept;
    const std::string& InsertOf(const std::vector<int>& written);
    void UpdateAdded(const Pending& added);
    void UpdateEdited(Pending& edited);

    bool isAtEnd = true;
    bool noMatch = false;
    bool hasMissed = false; // the last search failed: the current row isn't the one sought
    qint64 key = 0;
    const RowStore* rows = nullptr; // holds the current row; null if that was deleted
    std::size_t rowIndex = 0;
    DataVersion readVersion;
    RowStore single;

    std::optional<Pending> pending;
    bool locksEdits = false;
    std::optional<qint64> lastAdded;
    struct {
        std::vector<int> columns;
        std::string text;
    } insert;
};

} // namespace dao
