#include "ui/MenuImages.h"

#include <QApplication>
#include <QMenu>
#include <QMenuBar>
#include <QStyle>

namespace {
struct Image {
    int menu;
    int position;
    QStyle::StandardPixmap picture;
};
// imgNew, imgOpen, imgSave, imgPrint, imgClose and the transport pictures.
const Image kImages[] = {
    {0, 0, QStyle::SP_FileIcon},          {0, 2, QStyle::SP_FileDialogNewFolder},
    {0, 7, QStyle::SP_DialogOpenButton},  {0, 11, QStyle::SP_DialogSaveButton},
    {0, 15, QStyle::SP_DriveFDIcon},      {0, 22, QStyle::SP_DialogCloseButton},
    {1, 0, QStyle::SP_MediaSkipBackward}, {1, 2, QStyle::SP_MediaSeekBackward},
    {1, 3, QStyle::SP_MediaPlay},         {1, 4, QStyle::SP_MediaPause},
    {1, 5, QStyle::SP_MediaStop},         {1, 6, QStyle::SP_BrowserReload},
};
} // namespace

void window_SetMenuImages(QMenuBar* bar) {
    if (!bar) return;
    const QList<QAction*> menus = bar->actions();
    QStyle* style = QApplication::style();
    // Errors are passed over: an item that is not there keeps no picture.
    for (const Image& img : kImages) {
        if (img.menu >= menus.size() || !menus[img.menu]->menu()) continue;
        const QList<QAction*> items = menus[img.menu]->menu()->actions();
        if (img.position >= items.size() || items[img.position]->isSeparator()) continue;
        items[img.position]->setIcon(style->standardIcon(img.picture));
    }
}
