#pragma once
#include <QStringList>
#include <QWidget>

class MainContext;
class QComboBox;
class QPushButton;

// {AppPath}/locations.log: the folders added through FrmAddLocation, one a line.
QString location_LogPath();
// Its entries as the list reader gives them (a comma splits a path); damage is passed over.
QStringList location_ReadLog();
// Appends `location` unless the log holds it already.
void location_Remember(const QString& location);

// Adds a typed or chosen folder, remembering it in locations.log. `LocationTarget` 0 adds to the
// playlist, 1 to the Media Library.
class FrmAddLocation : public QWidget {
    Q_OBJECT
public:
    static FrmAddLocation* open(MainContext& ctx, int target = 0);
    static FrmAddLocation* instance();

    int LocationTarget = 0;
    QComboBox* cmbLocation;
    QPushButton* cmdBrowse;
    QPushButton* cmdAdd;
    QPushButton* cmdBack;
    QPushButton* cmdClose;

    void form_Load();
    void cmdBrowse_Click();
    void cmdAdd_Click();

private:
    FrmAddLocation(MainContext& ctx, QWidget* parent);
    MainContext& m_ctx;
};

// Opens FrmAddLocation for the playlist.
void mnuAddLocation_Click(MainContext& ctx);
