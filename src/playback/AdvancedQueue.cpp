#include "playback/AdvancedQueue.h"

#include "core/Dialogs.h"
#include "core/ListModel.h"
#include "core/MainContext.h"
#include "core/modFiles.h"
#include "playlists/PlaylistRows.h"

#include <QSet>

namespace {

AdvancedQueue::TagReader& tagReader() {
    static AdvancedQueue::TagReader reader;
    return reader;
}

bool hasTagKind(const QString& filename) {
    const QString ext = modFiles::file_GetExtension(filename).toLower();
    return ext == QLatin1String("mp3") || ext == QLatin1String("mp2") ||
           ext == QLatin1String("mp1");
}

QString pick(const AdvancedQueue::TagFields& f, int which) {
    switch (which) {
    case AdvancedQueue::ByArtist:
        return f.artist;
    case AdvancedQueue::ByAlbum:
        return f.album;
    case AdvancedQueue::ByYear:
        return f.year;
    default:
        return f.genre;
    }
}

} // namespace

void AdvancedQueue::setTagReader(TagReader reader) {
    tagReader() = std::move(reader);
}

void AdvancedQueue::Form_Load() {
    cmbOption = {QStringLiteral("Play"), QStringLiteral("Play Once"), QStringLiteral("Skip"),
                 QStringLiteral("Skip Once"), QStringLiteral("Remove")};
    cmbOptionText = cmbOption.first();
    opOptions_Click(ByArtist);
}

QString AdvancedQueue::fieldOf(int row, int which, bool fromColumnsOtherwise) {
    const ListModel& list = m_ctx.lstvPlaylist();
    const QString filename = list.text(row, PlaylistColumn::Filename);
    TagFields fields;
    if (!fromColumnsOtherwise || hasTagKind(filename)) {
        // A tag that cannot be read leaves every field empty: the row matches nothing.
        // Genres live in the ID3v1 tag when the list is filled.
        const bool v2 = chkSearchID3v2 && (fromColumnsOtherwise || which == ByAlbum);
        if (tagReader() && !tagReader()(filename, v2, fields)) fields = {};
    } else {
        fields.artist = list.text(row, PlaylistColumn::Artist);
        fields.year = list.text(row, PlaylistColumn::Year);
    }
    return pick(fields, which);
}

void AdvancedQueue::opOptions_Click(int index) {
    option = qBound(0, index, 3);
    cmbSearch.clear();
    const ListModel& list = m_ctx.lstvPlaylist();
    QSet<QString> seen;
    for (int i = 0; i < list.count(); ++i) {
        QString value;
        if (option == ByArtist)
            value = list.text(i, PlaylistColumn::Artist);
        else if (option == ByYear)
            value = list.text(i, PlaylistColumn::Year);
        else
            value = fieldOf(i, option, false);
        // The combo's own search is blind to case.
        if (value.isEmpty() || seen.contains(value.toLower())) continue;
        seen.insert(value.toLower());
        cmbSearch.append(value);
    }
}

int AdvancedQueue::cmdUpdate_Click() {
    if (cmbSearchText.isEmpty()) {
        Dialogs::msgBox(QStringLiteral("It has been detected that you have not entered anything "
                                       "into the search criteria section.\n\nPlease enter a search "
                                       "criteria before continuing with this function.\n"),
                        Dialogs::vbExclamation, QStringLiteral("Advanved Queuing Error"));
        return -1;
    }
    controlsEnabled = false;
    ListModel& list = m_ctx.lstvPlaylist();
    const QString wanted = cmbSearchText.toLower();
    int changed = 0;
    for (int i = 0; i < list.count(); ++i) {
        if (fieldOf(i, option, true).toLower() != wanted) continue;
        list.setText(i, PlaylistColumn::Status, cmbOptionText);
        ++changed;
    }
    controlsEnabled = true;
    return changed;
}
