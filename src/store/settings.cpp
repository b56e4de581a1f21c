// SPDX-License-Identifier: GPL-3.0-or-later
#include "store/settings.h"

#include "store/files/new_file.h"

#include <QFile>
#include <QFileInfo>

#include <algorithm>
#include <string>

// Debian keeps the bodies of the templates behind a switch; elsewhere it has no effect.
#define SI_IMPLEMENTATION
#define SI_NO_CONVERSION
#include <SimpleIni.h>

namespace zelto::store {

namespace {

/// Far above what the program writes; a larger file is not a settings file.
constexpr qint64 MaxFileSize = 1 << 20;

/// Whether the file could be read, or there is none.
bool read(const QString& path, CSimpleIniA& ini)
{
    QFile file(path);
    if (!file.exists())
        return true;
    // Opening a FIFO would wait for its other end.
    if (!QFileInfo(file).isFile() || !file.open(QIODevice::ReadOnly) || file.size() > MaxFileSize)
        return false;
    const std::string bytes = file.readAll().toStdString();
    return file.error() == QFileDevice::NoError && ini.LoadData(bytes) >= 0;
}

void write(const QString& path, CSimpleIniA& ini)
{
    ini.SetSpaces(false);
    std::string bytes;
    if (ini.Save(bytes) < 0)
        return;
    try {
        NewFile next(path);
        next.write(QByteArray::fromStdString(bytes));
        if (QFileInfo(path).exists())
            next.takePermissions(path);
        next.replace();
    } catch (const DatabaseError&) {
        // Settings that cannot be kept are no reason to trouble the user.
    }
}

std::string lineOf(const QString& value)
{
    const auto breaksLine = [](QChar c) { return c.unicode() < u' ' && c != u'\t'; };
    return std::ranges::any_of(value, breaksLine) ? std::string() : value.toStdString();
}

} // namespace

QString Settings::LeggiIni(const QString& section, const QString& key) const
{
    CSimpleIniA ini;
    if (!read(m_path, ini))
        return {};
    QString value =
        QString::fromUtf8(ini.GetValue(section.toUtf8().constData(), key.toUtf8().constData(), ""));
    value.truncate(MaxValueLength);
    if (!value.isEmpty() && value.back().isHighSurrogate())
        value.chop(1);
    return value;
}

void Settings::ScriviIni(const QString& section, const QString& key, const QString& value)
{
    ScriviIni(section, {{key, value}});
}

void Settings::ScriviIni(const QString& section, const KeyValues& values)
{
    CSimpleIniA ini;
    // A file that exists but cannot be read would lose what it holds.
    if (!read(m_path, ini))
        return;
    for (const auto& [key, value] : values)
        ini.SetValue(section.toUtf8().constData(), key.toUtf8().constData(), lineOf(value).c_str());
    write(m_path, ini);
}

} // namespace zelto::store
