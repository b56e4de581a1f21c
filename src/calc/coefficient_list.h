// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QStringView>

#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

namespace zelto::calc {

/// One list of coefficients of a job, by which the references in its rooms become numbers.
class CoefficientList
{
public:
    CoefficientList() = default;

    /// Reads the table text of a group: value, name, description in every row. The list ends at the
    /// first row without a value.
    explicit CoefficientList(QStringView tableText);

    /// The coefficient that a room field (UTF-8) stands for: a text beginning with "[" by the first
    /// entry that it opens, any other as the number it begins with. What resolves to nothing is 0.
    double resolve(std::string_view field);

    /// The row, counted from 1, of the entry that a reference opens; 0 when there is none.
    int rowOf(std::string_view reference);

private:
    /// What a reference leads to.
    struct Found
    {
        int row = 0;
        double value = 0;
    };
    const Found& find(std::string_view reference);
    [[nodiscard]] Found lookUp(std::string_view reference) const;

    struct Hash
    {
        using is_transparent = void;
        std::size_t operator()(std::string_view text) const
        {
            return std::hash<std::string_view>{}(text);
        }
    };

    std::vector<std::string> m_entries; ///< "[name] value", or the value alone
    /// Rooms repeat few references: each is looked up once.
    std::unordered_map<std::string, Found, Hash, std::equal_to<>> m_resolved;
};

} // namespace zelto::calc
