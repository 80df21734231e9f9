#pragma once
#include <QElapsedTimer>
#include <QObject>
#include <QSet>
#include <QString>
#include <QStringList>
#include <QTimer>
#include <deque>
#include <functional>
#include <memory>
#include <vector>

class Commands;
class clsID3v1;
class clsID3v2;
class ExistenceCache;
class ListModel;
class MainContext;

// Columns of lstvFilenames. Rows read from a playlist keep the playlist's cells in these places
// until their tags are read, which for other media types never happens.
namespace LibraryColumn {
enum { Artist = 0, Title = 1, Album = 2, Year = 3, Genre = 4, Comment = 5, Path = 6 };
}
// Columns of lstvResults.
namespace ResultColumn {
enum { Artist = 0, Title = 1, Year = 2, Length = 3, Path = 4 };
}

// The Media Library without its window: the loaded set (lstvFilenames, never shown), the side
// lists, the results, the window's own commands and the long work of loading. Long work runs in
// slices on the event loop; loading another set, clearing or destroying the library stops it.
class MediaLibrary : public QObject {
    Q_OBJECT
public:
    explicit MediaLibrary(MainContext& ctx, QObject* parent = nullptr);
    ~MediaLibrary() override;

    MainContext& ctx() { return m_ctx; }
    // The window's own menu entries; names may repeat those of the main window.
    Commands& commands() { return *m_commands; }
    ListModel& lstvFilenames() { return *m_filenames; }
    ListModel& lstvResults() { return *m_results; }
    ListModel& lstArtist() { return *m_artist; }
    ListModel& lstAlbum() { return *m_album; }
    ListModel& lstYear() { return *m_year; }

    bool ResultsEnabled = true;
    QString statusText() const { return m_status; }
    void setStatusText(const QString& text);

    // --- the set
    void filenames_Add(const QString& path);
    int filenames_AddDirectory(const QString& directory, const QString& extension);
    // Queues the reading of a mood file into the set.
    void mood_Open(const QString& path);
    bool mood_Save(const QString& path);
    // Queues the tag fill of every row from the first.
    void filenames_ShowID3Data();
    // Queues a folder walk: the folder and, when `recursive`, every folder below it.
    void filenames_QueueDirectory(const QString& directory, bool recursive);
    // Rebuilds the side lists now.
    void library_Update();
    void results_Add(const QString& artist, const QString& title, const QString& year,
                     const QString& length, const QString& path);
    void results_Find(const QString& text, int column);
    void window_SavePlaylist(const QString& path);
    // Index of the entry of `list` equal to `text`, or -1.
    int list_FindText(const ListModel& list, const QString& text) const;

    // --- the tree's contents
    static QStringList library_PlaylistNames();
    void window_SelectOption(const QString& parentKey, const QString& nodeText);
    // The side list entry chosen by the user: results for its text.
    void sideList_Click(ListModel& list);
    void txtSearch_Change(const QString& text);
    // True while a side list entry is being selected by the library itself, not by a user.
    bool selectingInCode() const { return m_selectingInCode; }

    // --- menu handlers
    void mnuNew_Click();
    void mnuOpen_Click();
    void mnuAddPlaylist_Click();
    void mnuAddFiles_Click();
    void mnuAddDirectory_Click();
    void mnuSaveAs_Click();
    void mnuRecentMedia_Click(int index);
    void mnuRecentPlaylist_Click(int index);
    void mnuRemoveAlDeadFilenames_Click();
    void mnuRemoveDuplicateFilenames_Click();
    void mnuRemoveSelected_Click();
    void mnuImportCurrentPlaylist_Click();
    void mnuExportToVELDOR_Click();
    void mnuSendToOp_Click(int index);
    void mnuUseID3v2Tags_Click();
    // A folder from the location window: sub-folders always scanned.
    void location_Add(const QString& folder);
    // Shows the songs whose `column` is `text` once the work at hand is done.
    void showMore(int column, const QString& text);

    void window_InstallSendToMoods();
    void window_RemoveMoodMenus();
    // The enabling rules and the song count, run whenever a list they follow changes.
    void tmrWindowUpdate_Timer();
    QString songsText() const;

    // --- long work
    static constexpr int SliceMs = 8;
    bool isWorking() const { return !m_stages.empty(); }
    void stopWork();
    // Runs what is queued to its end without the event loop (tests, benchmarks).
    void finishWork();

Q_SIGNALS:
    void statusTextChanged(const QString& text);
    // Rows done of the current step and its total; total 0 when nothing runs.
    void progress(int done, int total);
    void workFinished();
    void songsTextChanged(const QString& text);
    // A side list entry selected in code (the window then shows it).
    void sideListSelected(ListModel* list, int row);

private:
    // A stage runs until it is done (true) or its slice is over (false, run again later).
    using Stage = std::function<bool()>;
    void queue(Stage stage);
    void queueShow(const QString& logLine = {});
    void step();
    bool sliceOver() const { return m_clock.elapsed() >= SliceMs; }
    bool readTags(int row);
    void loadPlaylist(const QString& path, bool clearFirst);
    void addRecentPlaylist(const QString& path);
    void updateLater();
    void selectSideEntry(ListModel& list, int row);
    // Whether the file of a row of the set exists, remembered by row while the cache's answer
    // holds: a rebuild over 100,000 rows then reads a byte a row instead of a table entry.
    bool rowFileExists(int row);
    void forgetRowFiles(int first, int last);

    MainContext& m_ctx;
    Commands* m_commands;
    ListModel* m_filenames;
    ListModel* m_results;
    ListModel* m_artist;
    ListModel* m_album;
    ListModel* m_year;
    QString m_status;
    QString m_songs;
    std::deque<Stage> m_stages;
    QTimer m_tick;
    QTimer m_updateTick;
    QElapsedTimer m_clock;
    quint64 m_generation = 0;
    std::unique_ptr<clsID3v1> m_v1;
    std::unique_ptr<clsID3v2> m_v2;
    std::unique_ptr<ExistenceCache> m_files;
    bool m_selectingInCode = false;
    std::vector<quint8> m_rowFile; // 0 not known, 1 there, 2 missing
    quint64 m_rowFileGeneration = 0;
};
