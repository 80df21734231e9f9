#include "ui/FrmMenus.h"

#include "core/Commands.h"
#include "core/ConsoleLog.h"
#include "core/Dialogs.h"
#include "core/ListModel.h"
#include "core/MainContext.h"
#include "core/modFiles.h"

#include <QAction>
#include <QDir>
#include <QFileInfo>
#include <QMenu>
#include <QPointer>
#include <QStorageInfo>

namespace FrmMenus {

namespace {

constexpr int kFilenameColumn = 6;

// The drive list is read when asked for, not at every opening: a stick inserted later shows up
// after "Update Drives".
QList<Drive>& knownDrives() {
    static QList<Drive> drives;
    static bool read = false;
    if (!read) {
        read = true;
        drives = mountedDrives();
    }
    return drives;
}

bool under(const QString& root, const char* folder) {
    return root.startsWith(QString::fromLatin1(folder));
}

} // namespace

bool classify(const QString& root, const QString& fsType, Drive* drive) {
    const QString fs = fsType.toLower();
    static const QStringList network = {QStringLiteral("nfs"),   QStringLiteral("nfs4"),
                                        QStringLiteral("cifs"),  QStringLiteral("smb3"),
                                        QStringLiteral("smbfs"), QStringLiteral("fuse.sshfs")};
    static const QStringList optical = {QStringLiteral("iso9660"), QStringLiteral("udf")};
    const bool removable = under(root, "/media/") || under(root, "/run/media/");
    Drive d;
    d.root = root;
    if (network.contains(fs)) {
        d.typeName = QStringLiteral("Network Drive");
    } else if (optical.contains(fs)) {
        d.typeName = QStringLiteral("CD-ROM");
        d.removable = true;
    } else if (removable) {
        d.typeName = QStringLiteral("Floppy Disk Drive");
        d.removable = true;
    } else if (root == QLatin1String("/") || under(root, "/mnt/") ||
               (under(root, "/home") && !fs.startsWith(QLatin1String("fuse.")))) {
        d.typeName = QStringLiteral("Primary/Logical Disk Drive");
    } else {
        return false; // /proc, /sys, /run, /boot and the like
    }
    if (drive) *drive = d;
    return true;
}

QList<Drive> mountedDrives() {
    QList<Drive> fixed, removable;
    for (const QStorageInfo& v : QStorageInfo::mountedVolumes()) {
        Drive d;
        if (!v.isValid() || !v.isReady() ||
            !classify(v.rootPath(), QString::fromLatin1(v.fileSystemType()), &d))
            continue;
        (d.removable ? removable : fixed).append(d);
    }
    auto byRoot = [](const Drive& a, const Drive& b) { return a.root < b.root; };
    std::sort(removable.begin(), removable.end(), byRoot);
    std::sort(fixed.begin(), fixed.end(), byRoot);
    return removable + fixed;
}

void mnuDriveLetter_Click(MainContext& ctx, const QString& root) {
    ListModel& list = ctx.lstvPlaylist();
    for (int row = 0; row < list.count(); ++row) {
        if (!list.isSelected(row)) continue;
        const QString file = list.text(row, kFilenameColumn);
        if (!modFiles::file_Exists(file) || QFileInfo(file).isDir()) {
            Dialogs::msgBox(QStringLiteral("One of the selected files no longer exists:\n%1\n\n"
                                           "This file will not be copied.")
                                .arg(file),
                            Dialogs::vbExclamation, QStringLiteral("Error Copying Music To Driv"));
            continue;
        }
        modFiles::file_Copy(file, QDir(root).filePath(QFileInfo(file).fileName()));
        window_WriteLog(QStringLiteral("%1 copy to '%2' drive.").arg(file, root));
    }
}

void window_InstallDrives(MainContext& ctx, QMenu* menu, const QList<Drive>& drives) {
    // The update entry and its separator stay.
    for (QAction* a : menu->actions()) {
        if (a->objectName() != QLatin1String("mnuDriveLetter")) continue;
        menu->removeAction(a);
        a->deleteLater();
    }
    MainContext* p = &ctx;
    for (const Drive& d : drives) {
        QAction* a = menu->addAction(d.caption());
        a->setObjectName(QStringLiteral("mnuDriveLetter"));
        const QString root = d.root;
        QObject::connect(a, &QAction::triggered, menu,
                         [p, root] { mnuDriveLetter_Click(*p, root); });
    }
    if (drives.isEmpty()) {
        QAction* none = menu->addAction(QStringLiteral("[None]"));
        none->setObjectName(QStringLiteral("mnuDriveLetter"));
        none->setEnabled(false);
    }
}

void install(MainContext& ctx) {
    ctx.sendTo_AddDrives = [&ctx](QObject* sendTo) {
        auto* parent = qobject_cast<QMenu*>(sendTo);
        if (!parent) return;
        QMenu* drives = parent->addMenu(QStringLiteral("&Drive"));
        drives->setObjectName(QStringLiteral("mnuSendToDrive"));
        QAction* update = drives->addAction(QStringLiteral("&Update Drives"));
        update->setObjectName(QStringLiteral("mnuUpdateDrives"));
        drives->addSeparator();
        window_InstallDrives(ctx, drives, knownDrives());
        QPointer<QMenu> guard(drives);
        QObject::connect(update, &QAction::triggered, drives, [&ctx, guard] {
            knownDrives() = mountedDrives();
            if (guard) window_InstallDrives(ctx, guard, knownDrives());
        });
    };
}

} // namespace FrmMenus
