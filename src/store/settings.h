// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QString>
#include <QStringList>

#include <utility>
#include <vector>

namespace zelto::store {

/// The settings file: sections in square brackets, lines "key=value", in UTF-8. Every access reads
/// the file anew, so that two running programs see each other's values; order and comments stay
/// as they are. Sections and keys are found without regard to the letter case of A to Z.
class Settings
{
public:
    /// Longest value that is returned, in characters.
    static constexpr int MaxValueLength = 254;

    using KeyValues = std::vector<std::pair<QString, QString>>;

    explicit Settings(QString path) : m_path(std::move(path)) {}

    /// The value, cut after MaxValueLength characters; empty when the key is missing or the file
    /// cannot be read.
    [[nodiscard]] QString LeggiIni(const QString& section, const QString& key) const
    {
        return LeggiIni(section, QStringList{key}).front();
    }

    /// The values of several keys of a section, in the order of the keys, from one reading.
    [[nodiscard]] QStringList LeggiIni(const QString& section, const QStringList& keys) const;

    /// Writes the value, creating file, section and key as needed. A failure is ignored and leaves
    /// the file as it was. A value that does not fit on one line is written as empty.
    void ScriviIni(const QString& section, const QString& key, const QString& value)
    {
        ScriviIni(section, {{key, value}});
    }

    /// The same for several keys of a section at once. Values that are all there already leave the
    /// file alone.
    void ScriviIni(const QString& section, const KeyValues& values);

private:
    QString m_path;
};

} // namespace zelto::store
