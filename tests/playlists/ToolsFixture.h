#pragma once
#include "PlaylistFilesFixture.h"

#include "core/Commands.h"
#include "core/ScriptedPlayer.h"
#include "core/modControls.h"
#include "playlists/PlaylistTools.h"

#include <QApplication>
#include <QPointer>
#include <QPushButton>
#include <QWidget>

// The playlist tools installed over a fresh data folder; the Trash and the desktop's recent list
// live in it too. Starts are recorded as the selected row at the time of each player_Play.
class ToolsFixture : public PlaylistFilesFixture {
protected:
    ToolsFixture() : m_oldData(qgetenv("XDG_DATA_HOME")) {
        qputenv("XDG_DATA_HOME", home.file("xdg").toUtf8());
        ctx.setPlayer(&player);
        PlaylistTools_install(ctx);
        ctx.player_Play = [this](int) { started << listview_SelectedIndex(list()); };
        ctx.player_Stop = [this] { ++stops; };
        ctx.commands().setHandler("mnuStop", [this] { ++stops; });
        ctx.commands().setHandler(
            "mnuPlayNext", [this] { ctx.PlayNextRowIndex = listview_SelectedIndex(list()); });
    }
    ~ToolsFixture() override {
        // Windows a test closed, and those it left open, go before the context they point at.
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
        QList<QPointer<QWidget>> open;
        for (QWidget* w : QApplication::topLevelWidgets())
            if (w->testAttribute(Qt::WA_DeleteOnClose)) open << w;
        for (const QPointer<QWidget>& w : open)
            delete w.data(); // a window may take others with it

        ctx.setPlayer(nullptr);
        m_oldData.isNull() ? qunsetenv("XDG_DATA_HOME") : qputenv("XDG_DATA_HOME", m_oldData);
    }
    // Rows "Artist i" / "Title i", files /m/i.wav, numbered.
    void addRows(int n) {
        for (int i = 1; i <= n; ++i)
            addSong({}, QStringLiteral("Artist %1").arg(i), QStringLiteral("Title %1").arg(i),
                    QStringLiteral("/m/%1.wav").arg(i));
        listview_Renumber(list());
    }
    QStringList messages() const {
        QStringList out;
        for (const auto& a : dialogs.asked())
            out << a.text;
        return out;
    }
    QStringList trash() const {
        return QDir(home.file("xdg/Trash/files")).entryList(QDir::Files, QDir::Name);
    }
    template <class W> W* window() {
        for (QWidget* w : QApplication::topLevelWidgets())
            if (auto* found = qobject_cast<W*>(w); found && found->isVisible()) return found;
        return nullptr;
    }

    ScriptedPlayer player;
    QList<int> started;
    int stops = 0;

private:
    QByteArray m_oldData;
};
