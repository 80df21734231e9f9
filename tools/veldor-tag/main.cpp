// veldor-tag FILE...                         one JSON object a file: tags and MPEG fields
// veldor-tag --v1|--v2 --set FIELD=VALUE... FILE   writes one tag
#include "TagJson.h"
#include "tags/TagShift.h"

#include <QCoreApplication>
#include <QJsonDocument>
#include <cstdio>

namespace {

int usage() {
    std::fputs("usage: veldor-tag FILE...\n"
               "       veldor-tag --v1|--v2 --set FIELD=VALUE... FILE\n"
               "ID3v1 fields: Title Artist Album Year Comment Genre (name or byte)\n"
               "ID3v2 fields: ArtistURL BuyURL AudioURL Copyright Composer OriginalArtist LinkTo\n"
               "              PlayCounter EncodedBy Title Artist Album Year Comment Lyrics Track\n",
               stderr);
    return 2;
}

} // namespace

int main(int argc, char** argv) {
    QCoreApplication app(argc, argv);
    QCoreApplication::setApplicationName(QStringLiteral("veldor-tag"));
    const QStringList args = app.arguments().mid(1);
    if (args.isEmpty() || args.contains(QLatin1String("--help"))) return usage();

    if (args.first() == QLatin1String("--v1") || args.first() == QLatin1String("--v2")) {
        const bool v1 = args.first() == QLatin1String("--v1");
        if (args.size() < 4 || args.at(1) != QLatin1String("--set")) return usage();
        QStringList assignments;
        for (qsizetype i = 2; i + 1 < args.size(); ++i)
            if (args.at(i) != QLatin1String("--set")) assignments << args.at(i);
        const QString file = args.last();
        // Whatever an earlier run killed midway left is dealt with first.
        TagShift::recoverAll();
        const QString error = v1 ? writeID3v1(file, assignments) : writeID3v2(file, assignments);
        if (!error.isEmpty()) {
            std::fprintf(stderr, "veldor-tag: %s\n", error.toLocal8Bit().constData());
            return 1;
        }
        return 0;
    }

    for (const QString& file : args) {
        const QByteArray line = QJsonDocument(tagJson(file)).toJson(QJsonDocument::Compact);
        std::fwrite(line.constData(), 1, size_t(line.size()), stdout);
        std::fputc('\n', stdout);
    }
    return 0;
}
