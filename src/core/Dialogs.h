#pragma once
#include <QColor>
#include <QFont>
#include <QString>
#include <QStringList>
#include <functional>
#include <optional>

class QPrinter;
class QWidget;

// Every dialog of the program goes through here. A test installs a Responder that answers by
// script and records what was asked; VELDOR_DIALOG_ANSWERS / VELDOR_DIALOG_LOG do the same for a
// whole running program (see DialogScript.cpp).
namespace Dialogs {

// Message box results and flags, as the classic MsgBox knows them.
enum Result { vbOK = 1, vbCancel = 2, vbYes = 6, vbNo = 7 };
enum Flags { vbInformation = 64, vbExclamation = 48, vbQuestion = 32, vbYesNo = 4 };

struct FileRequest {
    QString title;
    QString initDir;
    QString fileName;
    QString filter;      // "Name|*.a;*.b|All Files|*.*|"
    int filterIndex = 0; // 1-based like the classic control; 0 counts as 1
    int flags = 0;
};
struct FileResult {
    QString path;        // empty when cancelled
    int filterIndex = 0; // 1-based index of the filter chosen
};

// What a dialog asked, for scripts and tests.
struct Asked {
    QString kind; // "message", "open", "save", "folder", "color", "font", "print"
    QString title;
    QString text; // message text, or the filter / prompt
    int flags = 0;
};

// Answers dialogs in place of the user. Each method returns the answer; message() returns a
// Result, the others empty / nullopt / false for cancel.
class Responder {
public:
    virtual ~Responder() = default;
    virtual int message(const Asked& asked) = 0;
    virtual FileResult file(const Asked& asked, const FileRequest& request) = 0;
    virtual QString folder(const Asked& asked, const QString& initial) = 0;
    virtual std::optional<QColor> color(const Asked& asked, const QColor& initial) = 0;
    virtual std::optional<QFont> font(const Asked& asked, const QFont& initial) = 0;
    // true to print; the printer may be set up (for example to write a PDF file).
    virtual bool print(const Asked& asked, QPrinter& printer) = 0;
};

// nullptr restores the real dialogs (or the environment's script).
void setResponder(Responder* responder);
Responder* responder();

// The owner window for real dialogs.
void setParentWindow(QWidget* parent);

int msgBox(const QString& text, int flags, const QString& title);
FileResult showOpen(const FileRequest& request);
FileResult showSave(const FileRequest& request);
QString browseFolder(const QString& prompt, const QString& initial);
std::optional<QColor> chooseColor(const QString& title, const QColor& initial);
std::optional<QFont> chooseFont(const QString& title, const QFont& initial);
bool showPrinter(const QString& title, QPrinter& printer);

// Where a dialog opens for a stored folder: the folder itself when it exists, else (a Windows
// default such as "C:\", a folder gone, a file) the user's Music folder, else the home folder.
QString startFolder(const QString& stored);

// A saved name typed without an extension takes the first extension of the filter chosen
// ("Trip" and "Playlist|*.spp|" give "Trip.spp"); "*.*" adds nothing.
QString withFilterExtension(const QString& path, const QString& filter, int filterIndex);

// "Name|*.a;*.b|All|*.*|" -> {"Name (*.a *.b)", "All (*.*)"}
QStringList convertFilter(const QString& filter);

} // namespace Dialogs
