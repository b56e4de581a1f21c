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

QString shortened(QString value)
{
    value.truncate(Settings::MaxValueLength);
    if (!value.isEmpty() && value.back().isHighSurrogate())
        value.chop(1);
    return value;
}

} // namespace

QStringList Settings::LeggiIni(const QString& section, const QStringList& keys) const
{
    CSimpleIniA ini;
    if (!read(m_path, ini))
        return QStringList(keys.size());
    const QByteArray name = section.toUtf8();
    QStringList values;
    for (const QString& key : keys)
        values << shortened(
            QString::fromUtf8(ini.GetValue(name.constData(), key.toUtf8().constData(), "")));
    return values;
}

void Settings::ScriviIni(const QString& section, const KeyValues& values)
{
    CSimpleIniA ini;
    // A file that exists but cannot be read would lose what it holds.
    if (!read(m_path, ini))
        return;
    const QByteArray name = section.toUtf8();
    bool changed = false;
    for (const auto& [key, value] : values) {
        const QByteArray keyName = key.toUtf8();
        const std::string line = lineOf(value);
        const char* const old = ini.GetValue(name.constData(), keyName.constData());
        if (old && old == line)
            continue;
        ini.SetValue(name.constData(), keyName.constData(), line.c_str());
        changed = true;
    }
    if (changed) // a synced write takes longer than all the rest
        write(m_path, ini);
}

} // namespace zelto::store
