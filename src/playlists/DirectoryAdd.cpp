#include "playlists/DirectoryAdd.h"

#include "core/Commands.h"
#include "core/ConsoleLog.h"
#include "core/Dialogs.h"
#include "core/ListModel.h"
#include "core/MainContext.h"
#include "core/Settings.h"
#include "core/modControls.h"
#include "core/modDirectorys.h"
#include "playlists/PlaylistRows.h"
#include "ui/FrmMessage.h"

#include <QApplication>

namespace {

const char* const kExtensions[] = {"mp3", "mp2", "mp1"};
constexpr int kExtensionCount = 3;

QString joinPath(const QString& folder, const QString& name) {
    return folder.endsWith(QLatin1Char('/')) ? folder + name : folder + QLatin1Char('/') + name;
}

std::unique_ptr<QStringList> filesOf(const QString& folder, const char* extension) {
    // Plain files in name order; the pattern ignores case.
    return std::make_unique<QStringList>(modDirectorys::directory_ListFiles(
        folder, QStringLiteral("*.") + QLatin1String(extension)));
}

void addFile(MainContext& ctx, const QString& path) {
    playlist_AddSong(ctx, QString(), QString(), QString(), path);
    window_WriteLog(path + QStringLiteral(" added to playlist."));
}

QWidget* mainWindow() {
    for (QWidget* w : QApplication::topLevelWidgets())
        if (w->objectName() == QLatin1String("FrmMain")) return w;
    return nullptr;
}

} // namespace

int playlist_AddDirectory(MainContext& ctx, const QString& directory, const QString& extension) {
    const QByteArray ext = extension.toLatin1();
    const auto files = filesOf(directory, ext.constData());
    for (const QString& name : *files)
        addFile(ctx, joinPath(directory, name));
    return int(files->size());
}

DirectoryAdd* DirectoryAdd::running(MainContext& ctx) {
    return ctx.findChild<DirectoryAdd*>(QStringLiteral("DirectoryAdd"), Qt::FindDirectChildrenOnly);
}

DirectoryAdd* DirectoryAdd::start(MainContext& ctx, const QString& directory,
                                  const QString& secondLine) {
    if (running(ctx)) return nullptr;
    return new DirectoryAdd(ctx, directory, secondLine);
}

DirectoryAdd::DirectoryAdd(MainContext& ctx, const QString& directory, const QString& secondLine)
    : QObject(&ctx), m_ctx(ctx), m_directory(directory) {
    setObjectName(QStringLiteral("DirectoryAdd"));
    if (qobject_cast<QApplication*>(QCoreApplication::instance())) {
        m_message = new FrmMessage(mainWindow());
        m_message->setAttribute(Qt::WA_DeleteOnClose, false);
        m_message->setLines(QStringLiteral("Reading from:  ") + directory, secondLine);
        m_message->showCentred(mainWindow());
        connect(m_message, &FrmMessage::cancelRequested, this, &DirectoryAdd::cancel);
    }
    m_keepSorted = !ctx.commands().isChecked(QStringLiteral("mnuDontSort"));
    if (m_keepSorted) ctx.lstvPlaylist().setSorted(false);
    ctx.beginBusy(QStringLiteral("Adding entries to the playlist, please wait..."));
    m_tick.setSingleShot(true);
    m_tick.setInterval(0);
    connect(&m_tick, &QTimer::timeout, this, &DirectoryAdd::step);
    m_tick.start();
}

DirectoryAdd::~DirectoryAdd() {
    delete m_message.data();
}

void DirectoryAdd::cancel() {
    m_cancelled = true;
}

void DirectoryAdd::setLine(const QString& text) {
    if (m_message) m_message->setSecondLine(text);
}

void DirectoryAdd::step() {
    QElapsedTimer clock;
    clock.start();
    bool more = false;
    switch (m_phase) {
    case Phase::Scan:
        scan();
        more = true;
        break;
    case Phase::List:
        more = listSome(clock);
        break;
    case Phase::Ask:
        ask();
        more = true;
        break;
    case Phase::Fill:
        more = fillSome(clock);
        break;
    case Phase::Done:
        break;
    }
    if (more && !m_cancelled)
        m_tick.start();
    else
        finish();
}

void DirectoryAdd::scan() {
    m_folders = {m_directory};
    if (settings_Read(QStringLiteral("Settings"), QStringLiteral("DoRecursiveDirectoryScan"),
                      QStringLiteral("1")) == QLatin1String("1")) {
        // The walk serves the event queue itself; each folder comes as often as it is listed.
        const QStringList below = modDirectorys::directory_GetSubdirectories(m_directory, 1);
        for (const QString& folder : below)
            if (!folder.trimmed().isEmpty()) m_folders.append(folder);
    }
    m_phase = Phase::List;
}

bool DirectoryAdd::listSome(const QElapsedTimer& clock) {
    while (clock.elapsed() < SliceMs) {
        if (!m_files) {
            if (m_folder >= m_folders.size()) {
                m_phase = Phase::Ask;
                return true;
            }
            m_base = m_folders[m_folder];
            m_files = filesOf(m_base, kExtensions[m_extension]);
            m_nextFile = 0;
        }
        if (m_nextFile < m_files->size()) {
            addFile(m_ctx, joinPath(m_base, m_files->at(m_nextFile++)));
            ++m_added;
            continue;
        }
        m_files.reset();
        if (++m_extension == kExtensionCount) {
            m_extension = 0;
            ++m_folder;
        }
    }
    return true;
}

void DirectoryAdd::ask() {
    // The count is the whole list's, not only the rows just added.
    bool filenames = false;
    if (m_ctx.lstvPlaylist().count() > 200) {
        if (m_message) m_message->hide();
        filenames =
            Dialogs::msgBox(
                QStringLiteral("Because of number of music files you have added to the playlist, "
                               "creating a full ID3 based playlist might take a few moments.\n\n"
                               "Would you like to use the filenames instead for the music?\n"),
                Dialogs::vbQuestion | Dialogs::vbYesNo,
                QStringLiteral("Use Simple Filenames Confirmation")) == Dialogs::vbYes;
        if (m_message) m_message->show();
    }
    setLine(filenames ? QStringLiteral("Reading each songs filename, please wait...")
                      : QStringLiteral("Reading each songs ID3 Tag, please wait..."));
    // As playlist_ShowMP3Data: with tags off no row reads its tag.
    const bool tags = m_ctx.commands().isChecked(QStringLiteral("mnuTagsShowTagsAsFilesAreAdded"));
    m_noTags = tags ? filenames : true;
    m_ctx.setStatusText(QStringLiteral("Updating the playlist entries, please wait..."));
    m_phase = Phase::Fill;
}

bool DirectoryAdd::fillSome(const QElapsedTimer& clock) {
    // The count is read afresh: the window answers while this runs.
    while (m_fillRow <= m_ctx.lstvPlaylist().count()) {
        playlist_UpdateItem(m_ctx, m_fillRow++, m_noTags);
        if ((m_fillRow & 15) == 0 && clock.elapsed() >= SliceMs) return true;
    }
    m_phase = Phase::Done;
    return false;
}

void DirectoryAdd::finish() {
    m_tick.stop();
    m_phase = Phase::Done;
    m_files.reset();
    ListModel& list = m_ctx.lstvPlaylist();
    if (m_keepSorted) list.setSorted(true);
    listview_Renumber(list);
    playlist_CheckEntries(m_ctx);
    m_ctx.endBusy();
    if (m_message) m_message->hide();
    // Gone from the context before anyone hears of the end, so a listener may start another.
    setParent(nullptr);
    setObjectName(QString());
    Q_EMIT finished();
    deleteLater();
}
