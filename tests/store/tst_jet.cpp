// SPDX-License-Identifier: GPL-3.0-or-later
// Reading databases of the Windows edition's engine.
#include "jet_dump.h"
#include "store/database_error.h"
#include "store_fixture.h"

#include <QDir>
#include <QRegularExpression>
#include <QTest>

using namespace Qt::StringLiterals;
using namespace zelto::test;

class TestJet : public QObject
{
    Q_OBJECT

private slots:
    void contents_data();
    void contents();
};

void TestJet::contents_data()
{
    QTest::addColumn<QString>("path");
    QStringList folders{QStringLiteral(JET_FOLDER)};
    // Databases that the engine itself made, where somebody has some, each with its dump.
    const QString samples = qEnvironmentVariable("ZELTO_JET_SAMPLES");
    if (!samples.isEmpty())
        folders << samples;
    for (const QString& folder : folders)
        for (const QFileInfo& file :
             QDir(folder).entryInfoList({u"*.zlt"_s, u"*.mdb"_s}, QDir::Files))
            QTest::addRow("%s", qPrintable(file.fileName())) << file.absoluteFilePath();
    if (samples.isEmpty())
        qInfo("ZELTO_JET_SAMPLES names no folder of databases that the engine made");
}

void TestJet::contents()
{
    QFETCH(QString, path);
    QVERIFY(zelto::store::jet::isJetFile(path));
    int unreadable = 0;
    const QStringList read = jetDump(path, unreadable).split(u'\n');
    const QString dump =
        QFileInfo(path).path() + u'/' + QFileInfo(path).completeBaseName() + u".dump"_s;
    // Of binary data the dumps have a digest, too, that is not known.
    static const QRegularExpression digest(u"(\tx:\\d+):[0-9a-f]{16}"_s);
    const QStringList expected =
        QString::fromUtf8(bytesOf(dump)).replace(digest, u"\\1"_s).split(u'\n');
    QVERIFY(expected.size() > 2);
    QCOMPARE(unreadable, 0);
    for (qsizetype line = 0; line < std::min(read.size(), expected.size()); ++line) {
        const auto differs =
            std::ranges::mismatch(read[line], expected[line]).in1 - read[line].begin();
        QCOMPARE(read[line].mid(differs, 40), expected[line].mid(differs, 40));
    }
    QCOMPARE(read.size(), expected.size());
}

QTEST_GUILESS_MAIN(TestJet)
#include "tst_jet.moc"
