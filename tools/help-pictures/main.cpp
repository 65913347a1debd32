#include "tools/help-pictures/ScriptPicture.h"

#include "display/FolderBitmaps.h"

#include <QDir>
#include <QFile>
#include <QTextStream>

#include <algorithm>
#include <cstdio>
#include <cstdlib>

namespace {

using orvista::help::HelpScript;

/// Pictures of another build of Qt may differ in the last bits of their antialiasing.
constexpr int tolerance = 6;

bool isAlike(const QImage& one, const QImage& other) {
    if (one.size() != other.size())
        return false;
    for (int y = 0; y < one.height(); ++y) {
        for (int x = 0; x < one.width(); ++x) {
            const QRgb a = one.pixel(x, y);
            const QRgb b = other.pixel(x, y);
            const int differences[] = {qRed(a) - qRed(b), qGreen(a) - qGreen(b), qBlue(a) - qBlue(b)};
            if (std::ranges::any_of(differences, [](int value) { return std::abs(value) > tolerance; }))
                return false;
        }
    }
    return true;
}

std::vector<HelpScript> scriptsOfHelp(const QDir& help) {
    std::vector<HelpScript> scripts;
    for (const QString& page : help.entryList({QStringLiteral("*.html")}, QDir::Files, QDir::Name)) {
        QFile file(help.filePath(page));
        if (!file.open(QIODevice::ReadOnly))
            continue;
        const auto found = orvista::help::scriptsOfPage(QString::fromLatin1(file.readAll()));
        scripts.insert(scripts.end(), found.begin(), found.end());
    }
    return scripts;
}

bool finish(const QImage& picture, const QString& path, bool check) {
    const bool good = check ? isAlike(picture, QImage(path)) : picture.save(path, nullptr, 0);
    if (!good)
        QTextStream(stderr) << path << (check ? " does not show its script\n" : " cannot be written\n");
    return good;
}

} // namespace

/// orvista-help-pictures HELP BITMAPS [--check]: draws a picture of every script that the pages of the folder
/// HELP print, into HELP/pictures. With --check it compares the pictures there instead.
int main(int argc, char** argv) {
    const bool check = argc == 4 && QByteArray(argv[3]) == "--check";
    if (argc != 3 && !check) {
        std::fputs("usage: orvista-help-pictures HELP BITMAPS [--check]\n", stderr);
        return 2;
    }
    const QDir help(QFile::decodeName(argv[1]));
    const orvista::FolderBitmaps bitmaps(QFile::decodeName(argv[2]).toStdString());
    const std::vector<HelpScript> scripts = scriptsOfHelp(help);
    bool good = !scripts.empty();
    for (const HelpScript& script : scripts) {
        const QString path = help.filePath(QStringLiteral("pictures/script-%1.png").arg(script.name));
        good = finish(orvista::help::scriptPicture(script, bitmaps), path, check) && good;
    }
    QTextStream(stdout) << scripts.size() << " scripts\n";
    return good ? EXIT_SUCCESS : EXIT_FAILURE;
}
