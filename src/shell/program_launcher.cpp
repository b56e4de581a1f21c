// SPDX-License-Identifier: GPL-3.0-or-later
#include "shell/program_launcher.h"

#include "text/literals.h"

#include <QFile>
#include <QFileInfo>
#include <QMimeDatabase>
#include <QStringList>

#include <gio/gdesktopappinfo.h>
#include <memory>
#include <tuple>

namespace zelto::shell {

namespace {

struct Unref
{
    void operator()(gpointer object) const { g_object_unref(object); }
};
template <typename T>
using Owned = std::unique_ptr<T, Unref>;
using Program = Owned<GAppInfo>;

Program programFor(const QString& mimeType)
{
    return Program(g_app_info_get_default_for_type(mimeType.toUtf8().constData(), FALSE));
}

QStringList categoriesOf(GAppInfo* program)
{
    const char* list = g_desktop_app_info_get_categories(G_DESKTOP_APP_INFO(program));
    return QString::fromUtf8(list).split(u';', Qt::SkipEmptyParts);
}

bool isCalculator(GAppInfo* program)
{
    return g_app_info_should_show(program) != FALSE &&
           categoriesOf(program).contains(u"Calculator"_s) &&
           g_desktop_app_info_get_boolean(G_DESKTOP_APP_INFO(program), "Terminal") == FALSE;
}

/// The lowest goes first.
auto rank(GAppInfo* program)
{
    const QStringList desktops = qEnvironmentVariable("XDG_CURRENT_DESKTOP").split(u':');
    const QStringList categories = categoriesOf(program);
    const bool native = std::ranges::any_of(
        categories, [&](const QString& category) { return desktops.contains(category); });
    return std::tuple(!native, QString::fromUtf8(g_app_info_get_name(program)).toLower(),
                      QString::fromUtf8(g_app_info_get_id(program)));
}

Program calculator()
{
    Program best = programFor(u"x-scheme-handler/calculator"_s);
    if (best)
        return best;
    GList* all = g_app_info_get_all();
    for (const GList* entry = all; entry; entry = entry->next) {
        Program program(G_APP_INFO(entry->data));
        if (isCalculator(program.get()) && (!best || rank(program.get()) < rank(best.get())))
            best = std::move(program);
    }
    g_list_free(all);
    return best;
}

} // namespace

void ApriConProgramma(const QString& fileName)
{
    const bool wantsCalculator = fileName.compare(u"calc.exe", Qt::CaseInsensitive) == 0;
    const Program program = wantsCalculator
                                ? calculator()
                                : programFor(QMimeDatabase().mimeTypeForFile(fileName).name());
    if (!program)
        return;
    const QByteArray path = QFile::encodeName(QFileInfo(fileName).absoluteFilePath());
    const Owned<GFile> file(g_file_new_for_path(path.constData()));
    GList files{.data = file.get(), .next = nullptr, .prev = nullptr};
    // What cannot be started does nothing, as when there is none.
    g_app_info_launch(program.get(), wantsCalculator ? nullptr : &files, nullptr, nullptr);
}

} // namespace zelto::shell
