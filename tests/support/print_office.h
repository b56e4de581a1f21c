// SPDX-License-Identifier: GPL-3.0-or-later
// A job, a printer's desk and a user, for tests of everything that prints.
#pragma once

#include "print/print_engine.h"
#include "print/ui/frm_preview.h"
#include "reports/report_fixture.h"
#include "reports/ui/print_screen.h"
#include "store/settings.h"
#include "store/store_fixture.h"
#include "support/scripted_user.h"

#include <QAbstractButton>
#include <QApplication>
#include <QTimer>

namespace zelto::test {

/// A folder with a copy of the example; everything that is asked of the user is answered there.
class PrintOffice
{
    JobFolder m_folder;
    print::PrinterDesk m_printers;

public:
    [[nodiscard]] QString path(const QString& name) const { return m_folder.file(name); }
    [[nodiscard]] reports::StampaContext context()
    {
        return {
            .lavoro = lavoro, .jobPath = job, .outputFolder = m_folder.path(), .print = services()};
    }
    [[nodiscard]] print::PrintServices services()
    {
        return {.engine = engine,
                .printers = m_printers,
                .window = user,
                .dialogs = user,
                .settings = settings};
    }

    /// The page files.
    [[nodiscard]] QStringList pageFiles() const
    {
        return QDir(m_folder.path()).entryList({u"~VKM*.Tmp"_s}, QDir::Files);
    }

    /// The recorded document as it is drawn.
    [[nodiscard]] MemorySurface pages()
    {
        MemorySurface surface;
        const print::DrawingTarget target(engine, surface);
        engine.PrintDocument(1, engine.pageCount());
        return surface;
    }

    const QString job = m_folder.example(u"ESEMPIO.ZLT"_s);
    store::Database lavoro = store::Database::open(job);
    ScriptedUser user{m_folder.path()};
    store::Settings settings{m_folder.file(u"Zelto.ini"_s)};
    print::PrintEngine engine{m_folder.path(), {.LocalDecimalSeparator = u','}};
};

/// Checks boxes and buttons of a screen, or takes their checks away.
inline void check(const QWidget& screen, const QStringList& names, bool on)
{
    for (const QString& name : names)
        screen.findChild<QAbstractButton*>(name)->setChecked(on);
}

/// Does something that opens a modal window, and something in that window, which then closes.
template <typename Window, typename Opening, typename Acting>
void inModal(Opening opening, Acting acting)
{
    bool wasThere = false;
    const QObject untilReturn;
    QTimer::singleShot(0, &untilReturn, [&] {
        auto* window = qobject_cast<Window*>(QApplication::activeModalWidget());
        if (window == nullptr)
            return;
        wasThere = true;
        if (!QTest::qWaitForWindowExposed(window))
            qFatal("the window does not appear");
        acting(*window);
        window->close();
    });
    opening();
    QVERIFY(wasThere);
}

/// Acts in the preview of a screen; it closes with the screen.
template <typename Acting>
void inPreview(reports::PrintScreen& screen, Acting acting)
{
    inModal<print::frmPreview>([&] { screen.anteprima(); }, acting);
}

} // namespace zelto::test
