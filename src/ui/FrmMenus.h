#pragma once
#include <QList>
#include <QString>

class MainContext;
class QMenu;

// The pop-up menu parts that no single window owns: the "Send To" drives.
namespace FrmMenus {

struct Drive {
    QString root;
    QString typeName;
    bool removable = false;
    QString caption() const { return root + QStringLiteral("  ") + typeName; }
};

// One mounted volume as the menu shows it; false for volumes a user never copies to
// (system and pseudo file systems).
bool classify(const QString& root, const QString& fsType, Drive* drive);
// The mounted volumes, removable ones first, each group in path order.
QList<Drive> mountedDrives();

// Copies the file of every selected row to `root`; a row whose file is gone warns and the
// copying goes on.
void mnuDriveLetter_Click(MainContext& ctx, const QString& root);
// Rebuilds the drive entries of `menu` (`window_RemoveDriveMenus` then `window_InstallDrives`).
void window_InstallDrives(MainContext& ctx, QMenu* menu, const QList<Drive>& drives);

void install(MainContext& ctx);

} // namespace FrmMenus
