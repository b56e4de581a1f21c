// SPDX-License-Identifier: GPL-3.0-or-later
#include "store/application_folder.h"
#include "store/master_database.h"
#include "store_fixture.h"
#include "support/plain_user.h"
#include "support/runner.h"

#include <QDir>

#include <sys/stat.h>

using namespace Qt::StringLiterals;
using namespace zelto::store;
using namespace zelto::test;

class TestApplicationFolder : public QObject
{
    Q_OBJECT

private slots:
    void folders()
    {
        QCOMPARE(settingsOf(u"bin"_s, 0777), u"bin/Zelto.ini"_s);
        QCOMPARE(settingsOf(u"bin"_s, 0555), u"home/zelto/Zelto.ini"_s);
        QCOMPARE(settingsOf(u"/usr/bin"_s, 0777), u"home/zelto/Zelto.ini"_s);
        // Not even the user's folder can be made.
        QCOMPARE(settingsOf(u"bin"_s, 0555, 0555), u"run/zelto/Zelto.ini"_s);
    }

    void masterIsProvided()
    {
        const JobFolder prefix;
        install(prefix);
        const QString delivered = prefix.file(u"share/zelto/Zelto.mdb"_s);
        ApplicationFolder folder(prefix.file(u"bin"_s), prefix.file(u"home"_s));
        folder.provideMaster();
        QCOMPARE(bytesOf(folder.masterPath()), bytesOf(delivered));
        // What the user did to his own stays until a newer one is delivered.
        RawFile(folder.masterPath()).run("UPDATE Coefficenti SET Descrizione = 'mia'");
        const QByteArray mine = bytesOf(folder.masterPath());
        folder.provideMaster();
        QCOMPARE(bytesOf(folder.masterPath()), mine);
        QCOMPARE(folder.remarks(), QString());
        writeBytes(folder.masterPath(), "damaged");
        folder.provideMaster();
        QCOMPARE(bytesOf(folder.masterPath()), bytesOf(delivered));
        QCOMPARE(bytesOf(prefix.file(u"bin/Zelto.mdb.DAN"_s)), "damaged");
        QVERIFY(folder.remarks().contains(u"Zelto.mdb.DAN"));
        QFile newer(delivered);
        QVERIFY(newer.open(QIODevice::ReadWrite));
        QVERIFY(newer.setFileTime(QDateTime::currentDateTime().addSecs(60),
                                  QFileDevice::FileModificationTime));
        newer.close();
        folder.provideMaster();
        QCOMPARE(groupDescriptions(folder.masterPath()).size(), 7);

        // Without a delivered one the own one does.
        QVERIFY(QFile::remove(delivered));
        QCOMPARE(errorOf([&] { folder.provideMaster(); }), 0);
        QVERIFY(QFile::remove(folder.masterPath()));
        QCOMPARE(errorOf([&] { folder.provideMaster(); }), 3024);
    }

    void descriptions()
    {
        const JobFolder folder;
        const QString path = folder.file(u"Zelto.mdb"_s);
        QCOMPARE(errorOf([&] { (void)groupDescriptions(path); }), 3024);
        QVERIFY(QFile::copy(QStringLiteral(ZELTO_MASTER), path));
        QStringList texts = groupDescriptions(path);
        QCOMPARE(texts.size(), 7);
        for (const QString& text : texts)
            QVERIFY2(text.size() > 20, qPrintable(text));
        QVERIFY(texts.first().contains(u"ambienti") && texts.last().contains(u"piano"));

        RawFile(path).run("UPDATE Coefficenti SET Descrizione = NULL WHERE Gruppo = 'Prospetto';"
                          "INSERT INTO Coefficenti SELECT * FROM Coefficenti");
        texts[3] = QString();
        QCOMPARE(groupDescriptions(path), texts);
    }

    void unfitMasters()
    {
        for (const auto& [change, error] : {std::pair("PRAGMA user_version = 0", 3031),
                                            {"DROP TABLE Coefficenti", 3078},
                                            {"CREATE VIEW v AS SELECT 1", 3343}}) {
            const JobFolder folder;
            const QString path = folder.file(u"Zelto.mdb"_s);
            QVERIFY(QFile::copy(QStringLiteral(ZELTO_MASTER), path));
            RawFile(path).run(change);
            QCOMPARE(errorOf([&] { (void)groupDescriptions(path); }), error);
        }
    }

private:
    /// An installed program: PREFIX/bin and PREFIX/share/zelto with a master database.
    static void install(const JobFolder& prefix)
    {
        QVERIFY(QDir().mkpath(prefix.file(u"bin"_s)));
        QVERIFY(QDir().mkpath(prefix.file(u"share/zelto"_s)));
        QVERIFY(QFile::copy(QStringLiteral(ZELTO_MASTER), prefix.file(u"share/zelto/Zelto.mdb"_s)));
    }

    /// Where within the prefix the settings go, in a folder that is there.
    static QString settingsOf(const QString& program, mode_t rights, mode_t around = 0777)
    {
        const JobFolder prefix;
        install(prefix);
        const auto allow = [&](const QString& name, mode_t mode) {
            ::chmod(QFile::encodeName(prefix.file(name)).constData(), mode);
        };
        const QByteArray session = QFile::encodeName(prefix.file(u"run"_s));
        qputenv("XDG_RUNTIME_DIR", session);
        ::mkdir(session.constData(), 0700);
        if (::geteuid() == 0 && ::chown(session.constData(), PlainUser::Nobody, PlainUser::Nobody))
            qFatal("cannot give the folder away");
        allow(u"."_s, around);
        allow(u"share/zelto/Zelto.mdb"_s, 0444);
        allow(u"bin"_s, rights);
        const PlainUser plain;
        const QDir folder(prefix.file(u"."_s));
        const ApplicationFolder chosen(folder.filePath(program), prefix.file(u"home/zelto"_s));
        return QDir(chosen.path()).exists() ? folder.relativeFilePath(chosen.settingsPath())
                                            : u"none"_s;
    }
};

ZELTO_TEST(TestApplicationFolder)
#include "tst_application_folder.moc"
