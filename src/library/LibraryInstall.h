#pragma once
#include <QString>

class MainContext;
class MediaLibrary;

// Opens the Media Library (or, when it is open, closes it, as the checked menu entry says).
void mnuOpenMediaLibrary_Click(MainContext& ctx);
// The open library, made and shown on first use.
MediaLibrary& mediaLibrary_Open(MainContext& ctx);
// Saves the place of an open library and closes it.
void mediaLibrary_Close(MainContext& ctx);
// Opens the library on the songs whose `column` (of the library's set) is `text`; an empty
// library takes the main window's list first.
void mediaLibrary_ShowMore(MainContext& ctx, int column, const QString& text);
// The selected playlist row's artist or year in the library.
void mnuMoreOnThisArtist_Click(MainContext& ctx);
void mnuMoreOnThisYear_Click(MainContext& ctx);

// Registers the commands and fills the context's hooks of the library.
void MediaLibrary_install(MainContext& ctx);
