// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "store/recordset.h"
#include "store/table_layout.h"

#include <QString>
#include <QStringView>

#include <map>
#include <optional>

namespace zelto::store {

/// All records of one table, in stored order or in the order of its index; finds, adds and changes
/// records. While it stands on a record, other programs cannot write the file.
class TableRecordset : public Recordset
{
public:
    enum class Comparison { Equal, GreaterOrEqual };

    /// Stands on the first record, if there is one.
    TableRecordset(const ConnectionPtr& connection, QStringView table);

    /// Puts the records in the order of the index and moves to the first; IndexNotFound unless it
    /// is "PrimaryKey" of a table that has one.
    void setIndex(QStringView name);

    [[nodiscard]] int RecordCount() const;

    /// NoCurrentRecord when the table is empty.
    void MoveFirst();
    void MoveNext();
    void MoveLast();

    /// Moves to the first record of the index whose key is the given one, or is not below it.
    /// Without one NoMatch() is true and there is no current record.
    void Seek(Comparison comparison, const QString& key);
    [[nodiscard]] bool NoMatch() const { return m_noMatch; }

    /// Begins a new record, all Null but for the auto-number. Moving drops it, as it drops an Edit.
    void AddNew();

    /// Begins a change of the current record.
    void Edit();

    /// Sets a field of the record being added or changed.
    void setField(int ordinal, const Value& value);
    void setField(QStringView name, const Value& value) { setField(ordinal(name), value); }

    /// Stores the record. A value that does not fit throws TextTooLong, EmptyNotAllowed, BadValue,
    /// NullKey or DuplicateKey and leaves everything as it was. After AddNew the current record is
    /// the one from before; after Edit it shows the new values.
    void Update();

    /// No current record and no lock on the file any more; MoveFirst or Seek begins again.
    void Close();

private:
    enum class Pending { Nothing, Add, Edit };

    [[nodiscard]] QString selectSql(QStringView clauses, QStringView moreColumns = {}) const;
    [[nodiscard]] QString orderColumn() const;
    [[nodiscard]] int identityIndex() const { return fieldCount(); }
    [[nodiscard]] int orderIndex() const { return fieldCount() + 1; }
    [[nodiscard]] int sameKeyIndex() const { return fieldCount() + 2; }

    void startScan(QStringView direction);
    void dropPending();
    void seekFrom(const Value& orderValue);
    void insertRecord();
    void updateRecord();
    /// Binds the changed values and what follows them; returns the number of records changed.
    int write(const QString& sql, std::span<const Value> rest = {});

    TableLayout m_layout;
    bool m_indexed = false;
    bool m_noMatch = false;
    Pending m_pending = Pending::Nothing;
    std::map<int, Value> m_changes;
    StatementPtr m_seek;
    StatementPtr m_write;
};

} // namespace zelto::store
