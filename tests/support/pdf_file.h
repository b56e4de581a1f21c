// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "store/store_fixture.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QMultiMap>
#include <QProcess>

namespace zelto::test {

/// What a program prints about a file; it must end well and say nothing else.
inline QByteArray outputOf(const QString& program, const QStringList& arguments)
{
    QProcess process;
    process.start(program, arguments);
    if (!process.waitForFinished() || process.exitCode() != 0 ||
        !process.readAllStandardError().isEmpty())
        qFatal("%s fails", qPrintable(program));
    return process.readAllStandardOutput();
}

/// A PDF file as qpdf reads it, which finds no fault in it. Names begin with "/".
class PdfFile
{
public:
    explicit PdfFile(const QString& path)
        : bytes(bytesOf(path)),
          json(QJsonDocument::fromJson(outputOf(u"qpdf"_s, {u"--json=2"_s, path})).object())
    {
        (void)outputOf(u"qpdf"_s, {u"--check"_s, path});
        collect(json[u"qpdf"_s].toArray().at(1));
    }

    /// The sections, each behind the number of the page that it leads to.
    [[nodiscard]] QStringList outline() const
    {
        QStringList lines;
        for (const QJsonValue entry : json[u"outlines"_s].toArray())
            lines << u"%1 %2"_s.arg(entry[u"destpageposfrom1"_s].toInt())
                         .arg(entry[u"title"_s].toString());
        return lines;
    }

    /// What viewers call the pages.
    [[nodiscard]] QStringList labels() const
    {
        QStringList labels;
        for (const QJsonValue page : json[u"pages"_s].toArray()) {
            const QJsonValue label = page[u"label"_s];
            labels << textOf(label[u"/P"_s]);
            if (label[u"/S"_s] == u"/D"_s)
                labels.back() += QString::number(label[u"/St"_s].toInt());
        }
        return labels;
    }

    /// A text of two bytes a character, or of one.
    [[nodiscard]] static QString textOf(const QJsonValue& value)
    {
        const QString text = value.toString();
        return text.startsWith(u"b:")
                   ? QString::fromLatin1(QByteArray::fromHex(text.mid(2).toLatin1()))
                   : text.mid(2);
    }

    /// The object that a reference names.
    [[nodiscard]] QJsonValue object(const QJsonValue& reference) const
    {
        const QJsonValue found = json[u"qpdf"_s][1][u"obj:"_s + reference.toString()];
        return found.toObject().contains(u"stream"_s) ? found[u"stream"_s][u"dict"_s]
                                                      : found[u"value"_s];
    }

    QByteArray bytes;
    QJsonObject json;
    QMultiMap<QString, QJsonValue> entries; ///< of all dictionaries, whatever holds them

private:
    void collect(const QJsonValue& value)
    {
        for (const QJsonValue element : value.toArray())
            collect(element);
        const QJsonObject dictionary = value.toObject();
        for (auto entry = dictionary.begin(); entry != dictionary.end(); ++entry) {
            entries.insert(entry.key(), entry.value());
            collect(entry.value());
        }
    }
};

} // namespace zelto::test
