// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "shell/job_summary.h"

#include <QAbstractTableModel>
#include <QHash>
#include <QSortFilterProxyModel>
#include <QStringList>

#include <vector>

namespace zelto::shell {

/// The jobs of the start page, a row each.
class JobList : public QAbstractTableModel
{
    Q_OBJECT

public:
    enum Column { Name, Description, SecondDescription, Date, Units, State, Columns };
    /// By what a column is sorted.
    static constexpr int SortRole = Qt::UserRole;
    /// All that a search looks at, as folded() makes it.
    static constexpr int SearchRole = Qt::UserRole + 1;

    using QAbstractTableModel::QAbstractTableModel;

    /// A survey begins: rows that it does not find again go when it ends. Names of other folders
    /// than this are shown with them.
    void begin(const QString& folder);
    void add(const QList<JobSummary>& jobs);
    void end();

    [[nodiscard]] const JobSummary& job(const QModelIndex& index) const;

    [[nodiscard]] int rowCount(const QModelIndex& parent = {}) const override;
    [[nodiscard]] int columnCount(const QModelIndex& parent = {}) const override;
    [[nodiscard]] QVariant data(const QModelIndex& index, int role) const override;
    [[nodiscard]] QVariant headerData(int section, Qt::Orientation orientation,
                                      int role) const override;

private:
    struct Row
    {
        JobSummary job;
        bool isFound = true;
    };
    [[nodiscard]] QString text(const JobSummary& job, int column) const;
    [[nodiscard]] QVariant sortKey(const JobSummary& job, int column) const;
    [[nodiscard]] QString searched(const JobSummary& job) const;
    void put(const JobSummary& job);

    QString m_folder;
    std::vector<Row> m_rows;
    QHash<QString, std::size_t> m_places; ///< of the rows, by path
};

/// The text without its case and accents.
[[nodiscard]] QString folded(const QString& text);

/// The jobs in which every word of a search occurs.
class FoundJobs : public QSortFilterProxyModel
{
    Q_OBJECT

public:
    using QSortFilterProxyModel::QSortFilterProxyModel;
    void search(const QString& text);

protected:
    [[nodiscard]] bool filterAcceptsRow(int row, const QModelIndex& parent) const override;

private:
    QStringList m_words;
};

} // namespace zelto::shell
