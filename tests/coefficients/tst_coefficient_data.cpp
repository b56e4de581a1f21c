// SPDX-License-Identifier: GPL-3.0-or-later
#include "coefficients/coefficient_groups.h"
#include "coefficients/general_data.h"
#include "store/store_fixture.h"
#include "support/dump.h"
#include "support/runner.h"

using namespace Qt::StringLiterals;
using namespace zelto::coefficients;
using zelto::store::Database;

class TestCoefficientData : public QObject
{
    Q_OBJECT

private slots:
    void init() { m_job.emplace(Database::open(m_folder.newJob(u"%1.ZLT"_s.arg(++m_jobs)))); }

    void groups()
    {
        m_job->Execute(u"UPDATE Variabili SET Var2 = NULL, Var3 = 'a'"_s);
        const GroupTexts loaded = loadGroups(*m_job);
        QCOMPARE(loaded[0], u" "_s);
        QCOMPARE(loaded[2], QString());
        const QString before = zelto::test::dumpOf(*m_job);
        saveGroups(*m_job, loaded, loaded);
        QCOMPARE(zelto::test::dumpOf(*m_job), before);

        GroupTexts changed = loaded;
        changed[3].clear();
        changed[4] = u"1\tA\tTesto\r\n"_s;
        saveGroups(*m_job, changed, loaded);
        QVERIFY(zelto::test::dumpOf(*m_job).contains(u"Variabili: [ ] [ ] - - [1\tA\tTesto\r\n] [ ] [ ]"));
    }

    void generalData()
    {
        const GeneralTexts empty = loadGeneralData(*m_job);
        QCOMPARE(empty, GeneralTexts());
        GeneralTexts texts;
        texts[TextDescrizione] = u"Condominio"_s;
        texts[TextData] = u"31/12/2013"_s;
        texts[TextFirstTable + 9] = u"Ascensore"_s;
        texts[TextTabellaCodici] = u"A\tScala\t50\r\n"_s;
        saveGeneralData(*m_job, texts, empty);
        QCOMPARE(loadGeneralData(*m_job), texts);
        QVERIFY(zelto::test::dumpOf(*m_job).contains(
            u"Dati Generali: [1] [Condominio] - - [2013-12-31] - - - - - - - - - - [Ascensore]"));
        saveGeneralData(*m_job, {}, texts);
        QCOMPARE(m_job->Execute(u"UPDATE [Dati Generali] SET Note = 'x' "
                                "WHERE Descrizione IS NULL AND Data IS NULL"_s),
                 1);
    }

    void missingRecordsAreAdded()
    {
        m_job->Execute(u"DELETE FROM Variabili"_s);
        m_job->Execute(u"DELETE FROM [Dati Generali]"_s);
        QCOMPARE(loadGroups(*m_job)[6], u" "_s);
        QCOMPARE(loadGeneralData(*m_job), GeneralTexts());
        QCOMPARE(m_job->count(u"Variabili"), 1);
        QCOMPARE(m_job->records(u"dati generali").integer(0), 1);
    }

    /// What is refused leaves all of the record as it was.
    void refusals_data()
    {
        QTest::addColumn<int>("text");
        QTest::addColumn<QString>("value");
        QTest::addColumn<int>("error");
        QTest::addRow("no date") << int(TextData) << u"31/02/2013"_s << 3421;
        QTest::addRow("too long") << int(TextDescrizione) << QString(31, u'x') << 3163;
        QTest::addRow("changed meanwhile") << int(TextNote) << u"mie"_s << 3197;
    }
    void refusals()
    {
        QFETCH(int, text);
        QFETCH(QString, value);
        QFETCH(int, error);
        const GeneralTexts loaded = loadGeneralData(*m_job);
        if (error == 3197)
            m_job->Execute(u"UPDATE [Dati Generali] SET Note = 'di altri'"_s);
        const QString before = zelto::test::dumpOf(*m_job);
        GeneralTexts texts = loaded;
        texts[TextRelazione] = u"Nuova"_s;
        texts.at(static_cast<std::size_t>(text)) = value;
        try {
            saveGeneralData(*m_job, texts, loaded);
            QFAIL("stored");
        } catch (const zelto::store::DatabaseError& refusal) {
            QCOMPARE(refusal.code(), error);
        }
        QCOMPARE(zelto::test::dumpOf(*m_job), before);
    }

private:
    zelto::test::JobFolder m_folder;
    std::optional<Database> m_job;
    int m_jobs = 0;
};

ZELTO_TEST(TestCoefficientData)
#include "tst_coefficient_data.moc"
