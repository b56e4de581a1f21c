// SPDX-License-Identifier: GPL-3.0-or-later
#include "shell/copy_dialog.h"
#include "store/file_operations.h"
#include "support/accessible_names.h"
#include "support/runner.h"

#include <QComboBox>
#include <QPushButton>
#include <QTemporaryDir>
#include <QTest>
#include <QTreeWidget>

using namespace Qt::StringLiterals;

using zelto::shell::CopyDialog;
using zelto::store::JobCopies;

/// Two jobs, A with two copies whose older one is damaged, B with one.
class TestCopyDialog : public QObject
{
    Q_OBJECT

private slots:
    void init()
    {
        m_folder = std::make_unique<QTemporaryDir>();
        for (const QString& job : {a(), b()}) {
            zelto::store::createJobFile(job);
            copies().keep(job);
        }
        QFile damaged(copies().copiesOf(a()).front().path);
        QVERIFY(damaged.open(QIODevice::WriteOnly | QIODevice::Truncate));
        damaged.close();
        copies().keep(a(), QDateTime(QDate(2031, 1, 2), QTime(3, 4, 5)));
    }

    void byKeyboard()
    {
        const JobCopies kept = copies();
        CopyDialog dialog(kept, b(), nullptr);
        dialog.show();
        QVERIFY(QTest::qWaitForWindowActive(&dialog));
        QCOMPARE(zelto::test::namelessControls(dialog), QStringList());
        auto& jobs = *dialog.findChild<QComboBox*>();
        auto& table = *dialog.findChild<QTreeWidget*>();
        const auto& restore = *dialog.findChild<QPushButton*>(u"BtRipristina"_s);
        QCOMPARE(dialog.chosen().value().job, b());
        QVERIFY(table.hasFocus());

        QTest::keyClick(&dialog, Qt::Key_L, Qt::AltModifier);
        QVERIFY(jobs.hasFocus());
        QTest::keyClick(&jobs, Qt::Key_Up);
        QCOMPARE(table.topLevelItem(0)->text(0), u"02/01/2031 03:04:05"_s);
        QCOMPARE(table.topLevelItem(0)->text(2), u"1"_s);
        QTest::keyClick(&jobs, Qt::Key_Tab);
        QTest::keyClick(&table, Qt::Key_Down);
        QCOMPARE(table.currentItem()->text(2), u"illeggibile"_s);
        QVERIFY(!restore.isEnabled() && !dialog.chosen());
        QTest::keyClick(&table, Qt::Key_Return);
        QCOMPARE(dialog.result(), int(QDialog::Rejected));
        QTest::keyClick(&table, Qt::Key_Up);
        QTest::keyClick(&table, Qt::Key_Return);
        QCOMPARE(dialog.result(), int(QDialog::Accepted));
        QCOMPARE(dialog.chosen().value().job, a());
    }

    void jobWithoutCopies()
    {
        const JobCopies kept = copies();
        CopyDialog dialog(kept, u"/nessun/lavoro.ZLT"_s, nullptr);
        QCOMPARE(dialog.chosen().value().job, a());
    }

private:
    [[nodiscard]] QString a() const { return m_folder->filePath(u"A.ZLT"_s); }
    [[nodiscard]] QString b() const { return m_folder->filePath(u"B.ZLT"_s); }
    [[nodiscard]] JobCopies copies() const { return JobCopies(m_folder->filePath(u"copie"_s)); }

    std::unique_ptr<QTemporaryDir> m_folder;
};

ZELTO_TEST(TestCopyDialog)
#include "tst_copy_dialog.moc"
