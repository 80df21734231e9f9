#include "playback/Lyrics.h"

#include "core/Commands.h"
#include "core/MainContext.h"
#include "core/Settings.h"
#include "core/SettingsCatalogue.h"
#include "core/modFiles.h"
#include "playback/FrmLyrics.h"
#include "system/modWindows.h"

#include <QCoreApplication>
#include <QGuiApplication>
#include <QPlainTextEdit>
#include <QPointer>
#include <QScreen>

namespace {

const QString kLyrics = QStringLiteral("Lyrics");

LyricsReader& reader() {
    static LyricsReader r;
    return r;
}

QPointer<FrmLyrics>& window() {
    static QPointer<FrmLyrics> w;
    return w;
}

bool placed = false;

int twips(const QString& key) {
    return int(settings_Number(kLyrics, key, settings_Default(kLyrics, key)));
}

} // namespace

void lyrics_SetReader(LyricsReader r) {
    reader() = std::move(r);
}

FrmLyrics& lyrics_Window() {
    if (!window()) {
        window() = new FrmLyrics;
        if (QCoreApplication* app = QCoreApplication::instance())
            QObject::connect(app, &QCoreApplication::aboutToQuit, window(), &QObject::deleteLater);
        lyrics_GetSize();
    }
    return *window();
}

void lyrics_OpenFile(MainContext& ctx, const QString& filename) {
    FrmLyrics& w = lyrics_Window();
    w.txtLyrics()->setPlainText(QString());
    const QString ext = modFiles::file_GetExtension(filename).toLower();
    if (ext == QLatin1String("mp3") || ext == QLatin1String("mp2") || ext == QLatin1String("mp1")) {
        const QString text = reader() ? reader()(filename) : QString();
        if (!text.isEmpty()) {
            // An open window keeps the box emptied above until it closes.
            if (!w.opened) {
                w.txtLyrics()->setPlainText(text);
                lyrics_Open(ctx);
            }
        } else if (w.opened) {
            lyrics_Close();
        }
    } else if (w.opened) {
        lyrics_Close();
    }
}

void lyrics_GetSize() {
    FrmLyrics& w = lyrics_Window();
    w.resize(modWindows::twipsToPixels(twips(QStringLiteral("Width")), &w),
             modWindows::twipsToPixels(twips(QStringLiteral("Height")), &w));
}

void lyrics_SaveSize() {
    if (!window()) return;
    FrmLyrics& w = *window();
    if (w.windowState() & (Qt::WindowMinimized | Qt::WindowMaximized)) return;
    settings_Write(kLyrics, QStringLiteral("Height"), modWindows::pixelsToTwips(w.height(), &w));
    settings_Write(kLyrics, QStringLiteral("Width"), modWindows::pixelsToTwips(w.width(), &w));
}

void lyrics_Open(MainContext& ctx) {
    FrmLyrics& w = lyrics_Window();
    modWindows::window_SetAlwaysOnTop(&w,
                                      ctx.commands().isChecked(QStringLiteral("mnuAlwaysOnTop")));
    // Placed once at the bottom centre of the screen; later the user's place stands.
    if (!placed) {
        if (QScreen* screen = QGuiApplication::primaryScreen()) {
            const QRect area = screen->availableGeometry();
            w.move(area.left() + (area.width() - w.width()) / 2,
                   area.bottom() + 1 - w.frameGeometry().height());
        }
        placed = true;
    }
    w.show();
    w.opened = true;
}

void lyrics_Close() {
    if (!window()) return;
    FrmLyrics& w = *window();
    modWindows::window_SetAlwaysOnTop(&w, false);
    w.hide();
    w.opened = false;
}

bool lyrics_IsOpened() {
    return window() && window()->opened;
}

void mnuWindowsShowLyricsWhenAvailable_Click(MainContext& ctx) {
    const QString menu = QStringLiteral("mnuWindowsShowLyricsWhenAvailable");
    const bool on = !ctx.commands().isChecked(menu);
    ctx.commands().setChecked(menu, on);
    settings_Write(QStringLiteral("Settings"), QStringLiteral("ShowLyricsWhenAvailable"),
                   on ? QStringLiteral("1") : QStringLiteral("0"));
}
