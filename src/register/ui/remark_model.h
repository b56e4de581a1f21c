// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "calc/job_check.h"

#include <QAbstractItemModel>

#include <span>
#include <vector>

namespace zelto::registro {

/// Remarks on a job grouped by their kind: the kinds that there are, with how many, and below each
/// its remarks.
class RemarkModel : public QAbstractItemModel
{
    Q_OBJECT

public:
    enum Column { Place, What, Shift, Columns };

    using QAbstractItemModel::QAbstractItemModel;

    /// Becomes those of the remarks in which the text occurs, whatever its case.
    void show(std::span<const calc::Osservazione> remarks, const QString& filter);

    [[nodiscard]] int count() const;

    /// The remark of a row; none for that of a kind.
    [[nodiscard]] const calc::Osservazione* remark(const QModelIndex& index) const;

    /// The same remark as it stands now; the one that took its place, if it is gone.
    [[nodiscard]] QModelIndex find(const calc::Osservazione& remark, int formerRow) const;

    [[nodiscard]] QModelIndex index(int row, int column, const QModelIndex& parent) const override;
    [[nodiscard]] QModelIndex parent(const QModelIndex& index) const override;
    [[nodiscard]] int rowCount(const QModelIndex& parent) const override;
    [[nodiscard]] int columnCount(const QModelIndex& parent) const override;
    [[nodiscard]] QVariant data(const QModelIndex& index, int role) const override;
    [[nodiscard]] QVariant headerData(int section, Qt::Orientation orientation,
                                      int role) const override;

private:
    struct Kind
    {
        calc::Gravita gravita = {};
        std::vector<calc::Osservazione> remarks = {};
    };

    [[nodiscard]] static QVariant ofKind(const Kind& kind, int column, int role);
    [[nodiscard]] static QVariant ofRemark(const calc::Osservazione& remark, int column, int role);

    std::vector<Kind> m_kinds;
};

} // namespace zelto::registro
