#pragma once
// What the file-reading fuzz targets share: a scratch folder in memory, dialogs answered by
// script and a log kept short, so a run stays fast and says nothing.
#include "core/ConsoleLog.h"
#include "core/DialogScript.h"
#include "core/Dialogs.h"

#include <QByteArray>
#include <QDir>
#include <QFile>
#include <QGuiApplication>
#include <QString>
#include <cstdlib>
#include <unistd.h>

namespace fuzz {

inline QString scratch() {
    static const QString dir = [] {
        const QString d = QStringLiteral("/dev/shm/veldor-fuzz-%1").arg(::getpid());
        QDir().mkpath(d);
        static int argc = 1;
        static char name[] = "fuzz";
        static char* argv[] = {name, nullptr};
        static QGuiApplication app(argc, argv);
        static ScriptedResponder responder;
        Dialogs::setResponder(&responder);
        std::atexit([] {
            QDir(QStringLiteral("/dev/shm/veldor-fuzz-%1").arg(::getpid())).removeRecursively();
        });
        return d;
    }();
    ConsoleLog::instance().setText(QString());
    return dir;
}

inline void put(const QString& path, const uint8_t* data, size_t size) {
    QFile f(path);
    if (f.open(QIODevice::WriteOnly | QIODevice::Truncate))
        f.write(reinterpret_cast<const char*>(data), qint64(size));
}

[[noreturn]] inline void fail(const char* what) {
    std::fprintf(stderr, "invariant broken: %s\n", what);
    std::abort();
}

} // namespace fuzz
