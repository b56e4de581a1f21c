// SPDX-License-Identifier: GPL-3.0-or-later
#include "register/ui/remark_model.h"

#include <QApplication>
#include <QFont>
#include <QIcon>
#include <QStyle>

#include <algorithm>
#include <numeric>

namespace zelto::registro {

using calc::Gravita;
using calc::Osservazione;

namespace {

QString line(const Osservazione& remark)
{
    return u"%1: %2"_s.arg(calc::nome(remark.gravita()), calc::testo(remark));
}

bool matches(const Osservazione& remark, const QString& filter)
{
    const QStringView subject = calc::descrizione(remark.regola).argomento;
    return subject.contains(filter, Qt::CaseInsensitive) ||
           line(remark).contains(filter, Qt::CaseInsensitive);
}

QIcon iconOf(Gravita kind)
{
    constexpr std::array Icons{QStyle::SP_MessageBoxCritical, QStyle::SP_MessageBoxWarning,
                               QStyle::SP_MessageBoxInformation};
    return QApplication::style()->standardIcon(Icons.at(static_cast<std::size_t>(kind)));
}

} // namespace

void RemarkModel::show(std::span<const Osservazione> remarks, const QString& filter)
{
    beginResetModel();
    m_kinds = {{Gravita::Errore}, {Gravita::Avviso}, {Gravita::Nota}};
    for (const Osservazione& remark : remarks)
        if (filter.isEmpty() || matches(remark, filter))
            m_kinds.at(static_cast<std::size_t>(remark.gravita())).remarks.push_back(remark);
    std::erase_if(m_kinds, [](const Kind& kind) { return kind.remarks.empty(); });
    endResetModel();
}

int RemarkModel::count() const
{
    return std::accumulate(m_kinds.begin(), m_kinds.end(), 0, [](int sum, const Kind& kind) {
        return sum + static_cast<int>(kind.remarks.size());
    });
}

// An index carries the place of its kind, from 1 on; that of a kind itself carries 0.

const Osservazione* RemarkModel::remark(const QModelIndex& index) const
{
    return index.isValid() && index.internalId() > 0
               ? &m_kinds[index.internalId() - 1].remarks[static_cast<std::size_t>(index.row())]
               : nullptr;
}

QModelIndex RemarkModel::find(const Osservazione& remark, int formerRow) const
{
    const auto kind = std::ranges::find(m_kinds, remark.gravita(), &Kind::gravita);
    if (kind == m_kinds.end())
        return {};
    const auto isSame = [&](const Osservazione& other) {
        return other.regola == remark.regola && other.posto == remark.posto;
    };
    const auto found = std::ranges::find_if(kind->remarks, isSame);
    const int last = static_cast<int>(kind->remarks.size()) - 1;
    return index(found == kind->remarks.end() ? std::min(formerRow, last)
                                              : static_cast<int>(found - kind->remarks.begin()),
                 Place, index(static_cast<int>(kind - m_kinds.begin()), Place, {}));
}

QModelIndex RemarkModel::index(int row, int column, const QModelIndex& parent) const
{
    if (!hasIndex(row, column, parent))
        return {};
    return createIndex(row, column, parent.isValid() ? quintptr(parent.row()) + 1 : quintptr(0));
}

QModelIndex RemarkModel::parent(const QModelIndex& index) const
{
    return remark(index) == nullptr
               ? QModelIndex()
               : createIndex(static_cast<int>(index.internalId()) - 1, 0, quintptr(0));
}

int RemarkModel::rowCount(const QModelIndex& parent) const
{
    if (!parent.isValid())
        return static_cast<int>(m_kinds.size());
    return remark(parent) != nullptr || parent.column() != Place
               ? 0
               : static_cast<int>(m_kinds[static_cast<std::size_t>(parent.row())].remarks.size());
}

int RemarkModel::columnCount(const QModelIndex& /*parent*/) const
{
    return Columns;
}

QVariant RemarkModel::ofKind(const Kind& kind, int column, int role)
{
    if (role == Qt::AccessibleTextRole || (role == Qt::DisplayRole && column == Place))
        return calc::conteggio(kind.remarks);
    if (column != Place)
        return {};
    if (role == Qt::DecorationRole)
        return iconOf(kind.gravita);
    if (role != Qt::FontRole)
        return {};
    QFont font = QApplication::font();
    font.setBold(true);
    return font;
}

QVariant RemarkModel::ofRemark(const Osservazione& remark, int column, int role)
{
    switch (role) {
    case Qt::DisplayRole:
        return column == Place  ? remark.dove
               : column == What ? remark.che
                                : calc::millesimiSpostati(remark);
    case Qt::AccessibleTextRole:
        // A screen reader reads the current cell alone, and passes over one without a text.
        return column == Shift && calc::millesimiSpostati(remark).isEmpty() ? u"vuoto"_s
                                                                            : line(remark);
    case Qt::ToolTipRole:
        return u"%1\nPerché: %2."_s.arg(calc::testo(remark),
                                        calc::descrizione(remark.regola).perche);
    case Qt::TextAlignmentRole:
        return column == Shift ? QVariant(Qt::AlignRight | Qt::AlignVCenter) : QVariant();
    default:
        return {};
    }
}

QVariant RemarkModel::data(const QModelIndex& index, int role) const
{
    if (const Osservazione* const one = remark(index))
        return ofRemark(*one, index.column(), role);
    return ofKind(m_kinds[static_cast<std::size_t>(index.row())], index.column(), role);
}

QVariant RemarkModel::headerData(int section, Qt::Orientation orientation, int role) const
{
    if (orientation != Qt::Horizontal)
        return {};
    if (role == Qt::DisplayRole)
        return QStringList{u"Dove"_s, u"Che cosa"_s, u"Millesimi"_s}.value(section);
    if (role == Qt::ToolTipRole && section == Shift)
        return u"Di quanto si sposta la quota che cambia di più, dove si può sapere: quella "
               "generale, o della scala o delle tabelle di cui si parla"_s;
    return {};
}

} // namespace zelto::registro
