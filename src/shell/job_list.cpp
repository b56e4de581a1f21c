// SPDX-License-Identifier: GPL-3.0-or-later
#include "shell/job_list.h"

#include "store/files/file_names.h"

#include <algorithm>
#include <array>

namespace zelto::shell {

namespace {

const std::array<QString, JobList::Columns> Captions{
    u"Lavoro"_s, u"Descrizione"_s, u"Seconda riga"_s, u"Data"_s, u"Unità"_s, u"Stato"_s};

} // namespace

void JobList::begin(const QString& folder)
{
    m_folder = folder;
    for (Row& row : m_rows)
        row.isFound = false;
}

void JobList::add(const QList<JobSummary>& jobs)
{
    for (const JobSummary& job : jobs)
        put(job);
}

void JobList::put(const JobSummary& job)
{
    const auto place = m_places.constFind(job.path);
    if (place == m_places.cend()) {
        const int row = rowCount();
        beginInsertRows({}, row, row);
        m_places.insert(job.path, m_rows.size());
        m_rows.push_back({job});
        endInsertRows();
    } else {
        m_rows.at(*place) = {job};
        const int row = static_cast<int>(*place);
        emit dataChanged(index(row, 0), index(row, Columns - 1));
    }
}

void JobList::end()
{
    for (std::size_t i = m_rows.size(); i-- > 0;) {
        if (m_rows.at(i).isFound)
            continue;
        const int row = static_cast<int>(i);
        beginRemoveRows({}, row, row);
        m_rows.erase(m_rows.begin() + row);
        endRemoveRows();
    }
    m_places.clear();
    for (std::size_t i = 0; i < m_rows.size(); ++i)
        m_places.insert(m_rows.at(i).job.path, i);
}

const JobSummary& JobList::job(const QModelIndex& index) const
{
    return m_rows.at(static_cast<std::size_t>(index.row())).job;
}

int JobList::rowCount(const QModelIndex& parent) const
{
    return parent.isValid() ? 0 : static_cast<int>(m_rows.size());
}

int JobList::columnCount(const QModelIndex& parent) const
{
    return parent.isValid() ? 0 : Columns;
}

QString JobList::text(const JobSummary& job, int column) const
{
    switch (column) {
    case Name: {
        const QString name = store::nameOf(store::withoutExtension(job.path));
        const QString folder = store::folderOf(job.path);
        return folder == m_folder ? name : u"%1 (%2)"_s.arg(name, folder);
    }
    case Description:
        return job.description;
    case SecondDescription:
        return job.secondDescription;
    case Date:
        return job.date.toString(u"dd/MM/yyyy"_s);
    case Units:
        return job.units < 0 ? QString() : QString::number(job.units);
    default:
        return stateText(job.state);
    }
}

QVariant JobList::sortKey(const JobSummary& job, int column) const
{
    if (column == Date)
        return job.date.isValid() ? job.date : QDate(1, 1, 1);
    return column == Units ? QVariant(job.units) : QVariant(folded(text(job, column)));
}

QString JobList::searched(const JobSummary& job) const
{
    QStringList texts;
    for (int column = 0; column < Columns; ++column)
        texts << text(job, column);
    return folded(texts.join(u'\n'));
}

QVariant JobList::data(const QModelIndex& index, int role) const
{
    const JobSummary& job = this->job(index);
    const int column = index.column();
    switch (role) {
    case Qt::DisplayRole:
        return text(job, column);
    case Qt::ToolTipRole:
        return job.fault.isEmpty() ? job.path : job.path + u"\n\n"_s + job.fault;
    case Qt::TextAlignmentRole:
        return column == Units ? QVariant(Qt::AlignRight | Qt::AlignVCenter) : QVariant();
    case Qt::AccessibleTextRole: {
        const QString shown = text(job, column);
        const QString spoken = column == State && shown.isEmpty() ? u"pronto"_s : shown;
        return Captions.at(static_cast<std::size_t>(column)) + u": "_s +
               (spoken.isEmpty() ? u"non indicato"_s : spoken);
    }
    case SortRole:
        return sortKey(job, column);
    case SearchRole:
        return searched(job);
    default:
        return {};
    }
}

QVariant JobList::headerData(int section, Qt::Orientation orientation, int role) const
{
    return orientation == Qt::Horizontal && role == Qt::DisplayRole
               ? QVariant(Captions.at(static_cast<std::size_t>(section)))
               : QVariant();
}

QString folded(const QString& text)
{
    QString plain = text.normalized(QString::NormalizationForm_D).toCaseFolded();
    plain.removeIf([](QChar c) { return c.isMark(); });
    return plain;
}

void FoundJobs::search(const QString& text)
{
    m_words = folded(text).split(u' ', Qt::SkipEmptyParts);
    invalidateFilter();
}

bool FoundJobs::filterAcceptsRow(int row, const QModelIndex& parent) const
{
    if (m_words.isEmpty())
        return true;
    const QString text = sourceModel()->index(row, 0, parent).data(JobList::SearchRole).toString();
    return std::ranges::all_of(m_words, [&](const QString& word) { return text.contains(word); });
}

} // namespace zelto::shell
