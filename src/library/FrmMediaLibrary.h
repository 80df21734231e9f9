#pragma once
#include <QWidget>
#include <utility>

class ListModel;
class ListView;
class MainContext;
class MediaLibrary;
class QLabel;
class QLineEdit;
class QMenu;
class QMenuBar;
class QProgressBar;
class QStatusBar;
class QTreeWidget;
class QTreeWidgetItem;

// The Media Library window: the tree of what to load, the side lists, the results and the
// window's menus. Everything it does is a command of MediaLibrary; the window only shows.
class FrmMediaLibrary : public QWidget {
    Q_OBJECT
public:
    explicit FrmMediaLibrary(MainContext& ctx, QWidget* parent = nullptr);
    ~FrmMediaLibrary() override;

    // The open window of this program, or nullptr.
    static FrmMediaLibrary* instance();

    MediaLibrary& library() { return *m_library; }

    QTreeWidget* tvOptions = nullptr;
    QLineEdit* txtOptionSearch = nullptr;
    QWidget* nfpSearch = nullptr;
    QLineEdit* txtSearch = nullptr;
    ListView* lstArtist = nullptr;
    ListView* lstAlbum = nullptr;
    ListView* lstYear = nullptr;
    ListView* lstvResults = nullptr;
    QStatusBar* sbStatusBar = nullptr;
    QMenu* mnuSelected = nullptr;

    void library_Setup();
    void tvOptions_NodeClick(QTreeWidgetItem* node);
    void txtOptionSearch_Change(const QString& text);
    // Saves the column widths and the place, as closing does.
    void Form_QueryUnload();
    // The modes of the View menu applied to the window.
    void applyModes();

protected:
    void closeEvent(QCloseEvent* event) override;
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    void buildMenus(QMenuBar* bar);
    void restoreColumns();
    void toggle(const char* command, const char* key);
    void showHint(const QString& text);

    MainContext& m_ctx;
    MediaLibrary* m_library;
    QLabel* m_songs = nullptr;
    QLabel* m_status = nullptr;
    QProgressBar* m_progress = nullptr;
    bool m_menuOpen = false;
    bool m_unloaded = false;
    // The side list entry the last change of current row acted on.
    std::pair<ListModel*, int> m_sideClicked{nullptr, -1};
};
