#include "system/SystemSetup.h"

#include "core/App.h"
#include "core/Commands.h"
#include "core/ConsoleLog.h"
#include "core/Dialogs.h"
#include "core/MainContext.h"
#include "core/Settings.h"
#include "system/FrmCheckForUpdates.h"
#include "system/UpdateCheck.h"
#include "system/modFileAssociations.h"
#include "system/modWindows.h"

namespace {

// After the preferences are written: each media type owned or handed back as its FileTypes
// key says, and the session start entry set or removed.
void associations_Apply() {
    using namespace modFileAssociations;
    const QStringList owned = filetype_Registered();
    QStringList problems;
    for (const FileType& type : fileTypes()) {
        const bool on = settings_IsOn(QStringLiteral("FileTypes"), type.key,
                                      type.defaultOn ? QStringLiteral("1") : QStringLiteral("0"));
        const bool has = owned.contains(type.key.toLower());
        QString why;
        if (on && !has) why = filetype_Register(App::Title(), type.key.toLower());
        if (!on && has) why = filetype_Unregister(type.key.toLower());
        if (!why.isEmpty()) problems << why;
    }
    const bool start =
        settings_IsOn(QStringLiteral("Settings"),
                      QStringLiteral("StartVELDOROnWindowsSessionStartup"), QStringLiteral("0"));
    QString why = start ? startup_SetRunValue(App::Title(), startup_Command())
                        : (startup_IsSet() ? startup_DeleteRunValue(App::Title()) : QString());
    if (!why.isEmpty()) problems << why;
    if (problems.isEmpty()) return;
    problems.removeDuplicates();
    window_WriteLog(problems.join(QLatin1Char(' ')));
    Dialogs::msgBox(problems.join(QStringLiteral("\n")), Dialogs::vbExclamation,
                    QStringLiteral("File Types"));
}

// The desktop's browser shows the page; without one the user is told where it is.
void openPage(const QUrl& url) {
    if (modWindows::shell_Open(url.toString())) return;
    Dialogs::msgBox(QStringLiteral("No web browser could be started for this page:\n\n%1\n")
                        .arg(url.toString()),
                    Dialogs::vbExclamation, QStringLiteral("Web Page Error"));
}

} // namespace

void SystemSetup_install(MainContext& ctx) {
    CheckForUpdates_install(ctx);
    Commands& c = ctx.commands();
    c.setHandler(QStringLiteral("mnuForum"), [] { openPage(UpdateCheck::forumUrl()); });
    c.setHandler(QStringLiteral("mnuHomepage"), [] { openPage(UpdateCheck::homepageUrl()); });
    // The Media Library calls the home page its website.
    c.add(QStringLiteral("mnuWebsite"), c.caption(QStringLiteral("mnuHomepage")));
    c.setHandler(QStringLiteral("mnuWebsite"), [] { openPage(UpdateCheck::homepageUrl()); });
    ctx.associations_Apply = associations_Apply;
    modFileAssociations::filetype_RegisterAtStartup(App::Title());
}
