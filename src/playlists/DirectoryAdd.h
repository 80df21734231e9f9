#pragma once
#include "ui/FrmMessage.h"

#include <QElapsedTimer>
#include <QObject>
#include <QPointer>
#include <QStringList>
#include <QTimer>
#include <memory>

class MainContext;

// A folder add that keeps the window alive: folders are listed and rows filled in slices of a
// few milliseconds, each slice a turn of the event loop. The progress window stays up while it
// runs; its Cancel stops the add, and the rows added so far stay. One add at a time per context.
class DirectoryAdd : public QObject {
    Q_OBJECT
public:
    // Starts an add of `directory` (its sub-folders too when "DoRecursiveDirectoryScan" is 1) and
    // returns at once; nullptr when an add is already under way. `secondLine` is the progress
    // window's second line while files are listed.
    static DirectoryAdd* start(MainContext& ctx, const QString& directory,
                               const QString& secondLine);
    // The add under way, or nullptr.
    static DirectoryAdd* running(MainContext& ctx);

    void cancel();
    bool isCancelled() const { return m_cancelled; }
    int rowsAdded() const { return m_added; }
    FrmMessage* messageWindow() const { return m_message; }

    // Time one slice may take before the event loop gets its turn.
    static constexpr int SliceMs = 8;

Q_SIGNALS:
    void finished();

private:
    DirectoryAdd(MainContext& ctx, const QString& directory, const QString& secondLine);
    ~DirectoryAdd() override;
    enum class Phase { Scan, List, Ask, Fill, Done };
    void step();
    void scan();
    bool listSome(const QElapsedTimer& clock);
    void ask();
    bool fillSome(const QElapsedTimer& clock);
    void finish();
    void setLine(const QString& text);

    MainContext& m_ctx;
    QString m_directory;
    QStringList m_folders;
    int m_folder = 0;
    int m_extension = 0;
    std::unique_ptr<QStringList> m_files; // the current folder's, in name order
    qsizetype m_nextFile = 0;
    QString m_base;
    int m_added = 0;
    int m_fillRow = 1;
    bool m_noTags = true;
    bool m_keepSorted = false;
    bool m_cancelled = false;
    Phase m_phase = Phase::Scan;
    QTimer m_tick;
    QPointer<FrmMessage> m_message;
};

// Adds the files `{directory}/*.{extension}` in name order, one row
// each, logging each; returns how many. No tags are read here.
int playlist_AddDirectory(MainContext& ctx, const QString& directory, const QString& extension);
