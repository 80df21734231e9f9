#include "core/Dialogs.h"

#include "core/App.h"
#include "core/DialogScript.h"
#include "core/ShownText.h"

#include <QApplication>
#include <QColorDialog>
#include <QDir>
#include <QFileDialog>
#include <QFileInfo>
#include <QFontDialog>
#include <QMessageBox>
#include <QPointer>
#include <QPrintDialog>
#include <QPrinter>
#include <QRegularExpression>
#include <QStandardPaths>

namespace Dialogs {
namespace {
Responder* g_responder = nullptr;
bool g_envChecked = false;
QPointer<QWidget> g_parent;

Responder* active() {
    if (g_responder) return g_responder;
    if (!g_envChecked) {
        g_envChecked = true;
        g_responder = ScriptedResponder::fromEnvironment();
    }
    return g_responder;
}

QString withoutTrailingBreaks(QString text) {
    text.replace(QLatin1String("\r\n"), QLatin1String("\n"));
    return text;
}

FileResult runFileDialog(const FileRequest& r, bool save) {
    const QStringList filters = convertFilter(r.filter);
    QFileDialog dlg(g_parent, r.title, r.initDir);
    dlg.setAcceptMode(save ? QFileDialog::AcceptSave : QFileDialog::AcceptOpen);
    const bool several = !save && (r.flags & 512); // the classic "allow multiple selection"
    dlg.setFileMode(save ? QFileDialog::AnyFile
                         : (several ? QFileDialog::ExistingFiles : QFileDialog::ExistingFile));
    dlg.setOption(QFileDialog::DontConfirmOverwrite); // callers ask themselves
    if (!filters.isEmpty()) {
        dlg.setNameFilters(filters);
        dlg.selectNameFilter(filters.value(qBound(1, r.filterIndex, int(filters.size())) - 1));
    }
    if (!r.fileName.isEmpty()) dlg.selectFile(r.fileName);
    if (dlg.exec() != QDialog::Accepted || dlg.selectedFiles().isEmpty()) return {};
    FileResult result;
    result.path = dlg.selectedFiles().constFirst();
    if (several && dlg.selectedFiles().size() > 1) {
        // As the classic dialog answers: the folder, then each name, NUL between them.
        QStringList parts{QFileInfo(result.path).path()};
        for (const QString& f : dlg.selectedFiles())
            parts.append(QFileInfo(f).fileName());
        result.path = parts.join(QChar(0));
    }
    result.filterIndex = int(filters.indexOf(dlg.selectedNameFilter())) + 1;
    return result;
}
} // namespace

void setResponder(Responder* responder) {
    g_responder = responder;
    g_envChecked = true;
}
Responder* responder() {
    return active();
}
void setParentWindow(QWidget* parent) {
    g_parent = parent;
}

QStringList convertFilter(const QString& filter) {
    QStringList parts = filter.split(QLatin1Char('|'));
    QStringList out;
    for (int i = 0; i + 1 < parts.size(); i += 2) {
        QString patterns = parts[i + 1];
        patterns.replace(QLatin1Char(';'), QLatin1Char(' '));
        out.append(parts[i] + QStringLiteral(" (") + patterns + QLatin1Char(')'));
    }
    return out;
}

int msgBox(const QString& fullText, int flags, const QString& fullTitle) {
    // A message box shows its texts up to the first NUL, scripted or not.
    const QString text = text_Shown(fullText), title = text_Shown(fullTitle);
    const Asked asked{QStringLiteral("message"), title, text, flags};
    if (Responder* r = active()) return r->message(asked);
    QMessageBox box(g_parent);
    box.setWindowTitle(title.isEmpty() ? App::Title() : title);
    box.setText(withoutTrailingBreaks(text).trimmed());
    if ((flags & 0x30) == vbExclamation)
        box.setIcon(QMessageBox::Warning);
    else if ((flags & 0x70) == vbInformation)
        box.setIcon(QMessageBox::Information);
    else if ((flags & 0x30) == vbQuestion)
        box.setIcon(QMessageBox::Question);
    if (flags & vbYesNo) {
        box.setStandardButtons(QMessageBox::Yes | QMessageBox::No);
        box.setDefaultButton((flags & 256) ? QMessageBox::No : QMessageBox::Yes); // 256: No first
        return box.exec() == QMessageBox::Yes ? vbYes : vbNo;
    }
    box.setStandardButtons(QMessageBox::Ok);
    box.exec();
    return vbOK;
}

FileResult showOpen(const FileRequest& asked) {
    FileRequest request = asked;
    request.initDir = startFolder(asked.initDir);
    if (Responder* r = active())
        return r->file({QStringLiteral("open"), request.title, request.filter, request.flags},
                       request);
    return runFileDialog(request, false);
}

QString startFolder(const QString& stored) {
    // "C:\" and its kind name nothing here, even where a folder of that name could exist.
    static const QRegularExpression windowsPath(QStringLiteral("^[A-Za-z]:[\\\\/]?"));
    if (!stored.trimmed().isEmpty() && !windowsPath.match(stored).hasMatch() &&
        QFileInfo(stored).isDir())
        return stored;
    const QString music = QStandardPaths::writableLocation(QStandardPaths::MusicLocation);
    if (!music.isEmpty() && QFileInfo(music).isDir()) return music;
    return QDir::homePath();
}

QString withFilterExtension(const QString& path, const QString& filter, int filterIndex) {
    const QString name = QFileInfo(path).fileName();
    if (name.isEmpty() || name.contains(QLatin1Char('.'))) return path;
    const QStringList parts = filter.split(QLatin1Char('|'));
    const qsizetype patterns = qsizetype(qMax(1, filterIndex) - 1) * 2 + 1;
    if (patterns >= parts.size()) return path;
    const QString first = parts[patterns].section(QLatin1Char(';'), 0, 0).trimmed();
    if (!first.startsWith(QLatin1String("*."))) return path;
    const QString extension = first.mid(2);
    if (extension.isEmpty() || extension.contains(QLatin1Char('*')) ||
        extension.contains(QLatin1Char('?')))
        return path;
    return path + QLatin1Char('.') + extension;
}

FileResult showSave(const FileRequest& asked) {
    FileRequest request = asked;
    request.initDir = startFolder(asked.initDir);
    FileResult result;
    if (Responder* r = active())
        result = r->file({QStringLiteral("save"), request.title, request.filter, request.flags},
                         request);
    else
        result = runFileDialog(request, true);
    // What the classic save dialog did for a name typed bare.
    if (!result.path.isEmpty())
        result.path =
            withFilterExtension(result.path, request.filter,
                                result.filterIndex ? result.filterIndex : request.filterIndex);
    return result;
}

QString browseFolder(const QString& prompt, const QString& stored) {
    const QString initial = startFolder(stored);
    if (Responder* r = active())
        return r->folder({QStringLiteral("folder"), prompt, initial, 0}, initial);
    return QFileDialog::getExistingDirectory(g_parent, prompt, initial);
}

std::optional<QColor> chooseColor(const QString& title, const QColor& initial) {
    if (Responder* r = active())
        return r->color({QStringLiteral("color"), title, initial.name(), 0}, initial);
    const QColor c = QColorDialog::getColor(initial, g_parent, title);
    return c.isValid() ? std::optional<QColor>(c) : std::nullopt;
}

std::optional<QFont> chooseFont(const QString& title, const QFont& initial) {
    if (Responder* r = active())
        return r->font({QStringLiteral("font"), title, initial.family(), 0}, initial);
    bool ok = false;
    const QFont f = QFontDialog::getFont(&ok, initial, g_parent, title);
    return ok ? std::optional<QFont>(f) : std::nullopt;
}

bool showPrinter(const QString& title, QPrinter& printer) {
    if (Responder* r = active())
        return r->print({QStringLiteral("print"), title, QString(), 0}, printer);
    QPrintDialog dlg(&printer, g_parent);
    dlg.setWindowTitle(title);
    return dlg.exec() == QDialog::Accepted;
}

} // namespace Dialogs
