#pragma once
#include <QString>
#include <QStringList>
#include <functional>

class MainContext;

// The Advanced queue: rewrites the Status of every playlist row whose artist, album, year or
// genre equals a value. Albums and genres come from the tags of mp3, mp2 and mp1 files.
class AdvancedQueue {
public:
    struct TagFields {
        QString artist, album, year, genre;
    };
    // Reads the tag of a file (the ID3v2 one when `id3v2`); false when there is none to read.
    using TagReader = std::function<bool(const QString& filename, bool id3v2, TagFields& out)>;
    // The tag subsystem installs its readers here; without one no tag matches.
    static void setTagReader(TagReader reader);

    enum Option : int { ByArtist = 0, ByAlbum = 1, ByYear = 2, ByGenre = 3 };

    explicit AdvancedQueue(MainContext& ctx) : m_ctx(ctx) {}

    // --- what the dialog shows
    QStringList cmbOption; // "Play", "Play Once", "Skip", "Skip Once", "Remove"
    QString cmbOptionText; // the status given to matching rows
    QStringList cmbSearch; // the distinct values of the chosen field, in row order
    QString cmbSearchText; // the criterion
    int option = ByArtist; // which of opOptions is selected
    bool chkSearchID3v2 = false;
    bool controlsEnabled = true;

    void Form_Load();
    void opOptions_Click(int index);
    // Rows changed; -1 when the criterion was empty (the user was told).
    int cmdUpdate_Click();

private:
    QString fieldOf(int row, int which, bool fromColumnsOtherwise);

    MainContext& m_ctx;
};
