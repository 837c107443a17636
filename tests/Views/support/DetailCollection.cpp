#include "support/DetailCollection.h"

#include "support/FixtureCollection.h"

#include <QDir>
#include <QFile>
#include <QPainter>
#include <stdexcept>

namespace ludarium::test {

namespace {

void draw(const QString &path, QSize size, const QColor &color, const QString &text, bool clear = false) {
    QImage image(size, QImage::Format_ARGB32);
    image.fill(clear ? QColor(Qt::transparent) : color);
    QPainter painter(&image);
    painter.setRenderHint(QPainter::Antialiasing);
    if (!clear)
        for (int ring = 0; ring < 7; ++ring) {
            painter.setPen(Qt::NoPen);
            painter.setBrush(color.lighter(110 + 12 * ring));
            painter.drawEllipse(QPointF(size.width() * 0.7, size.height() * 0.35), size.width() * 0.07 * (7 - ring),
                                size.width() * 0.07 * (7 - ring));
        }
    QFont font(painter.font());
    font.setPixelSize(clear ? size.height() / 2 : size.height() / 8);
    font.setBold(true);
    painter.setFont(font);
    painter.setPen(clear ? color : QColor(Qt::white));
    painter.drawText(image.rect().adjusted(12, 12, -12, -12), Qt::AlignCenter | Qt::TextWordWrap, text);
    painter.end();
    QDir().mkpath(QFileInfo(path).path());
    if (!image.save(path))
        throw std::runtime_error("cannot write " + path.toStdString());
}

QByteArray element(const char *name, const QString &value) {
    return value.isEmpty() ? QByteArray()
                           : "    <" + QByteArray(name) + ">" + value.toHtmlEscaped().toUtf8() + "</" + name + ">\n";
}

QByteArray game(int number, const QString &title, const QString &platform, const QByteArray &more = {}) {
    const QString path = QStringLiteral("eXo\\eXoDOS\\!dos\\det%1\\").arg(number);
    return "  <Game>\n" + element("ID", QStringLiteral("detail-%1").arg(number)) + element("Title", title) +
           element("Platform", platform) + element("ApplicationPath", path + QStringLiteral("game.bat")) +
           element("ConfigurationPath", path + QStringLiteral("install.bat")) + more + "  </Game>\n";
}

QByteArray known() {
    return element("ReleaseDate", QStringLiteral("1994-11-03T00:00:00-05:00")) +
           element("Developer", QStringLiteral("Northlight Software")) +
           element("Publisher", QStringLiteral("Cardinal Works")) + element("Genre", QStringLiteral("Adventure"));
}

QByteArray everythingOfTheRest() {
    QString overview;
    for (int i = 0; i < 6; ++i)
        overview += QStringLiteral("A lighthouse keeper finds a second lamp behind the first, and with it a coast that "
                                   "no map of the bay has ever shown. Between two tides she has to learn whose ships "
                                   "it was lit for.\n\n");
    return known() + element("Overview", overview.trimmed()) + element("Series", QStringLiteral("Lantern Trilogy")) +
           element("PlayMode", QStringLiteral("Single Player; Cooperative")) +
           element("MaxPlayers", QStringLiteral("2")) + element("Cooperative", QStringLiteral("true")) +
           element("Rating", QStringLiteral("E - Everyone")) + element("CommunityStarRating", QStringLiteral("4.27")) +
           element("CommunityStarRatingTotalVotes", QStringLiteral("1283")) +
           element("Source", QStringLiteral("Fixture")) +
           element("ManualPath", QStringLiteral("Manuals\\MS-DOS\\winter.pdf"));
}

QByteArray application(int number, const QString &name, const QString &path) {
    return "  <AdditionalApplication>\n" + element("Id", QStringLiteral("app-%1").arg(number)) +
           element("GameID", QStringLiteral("detail-1")) + element("Name", name) + element("ApplicationPath", path) +
           "  </AdditionalApplication>\n";
}

void writePictures(const QString &root) {
    const QString images = root + QStringLiteral("/Images/MS-DOS/");
    const QString name = QStringLiteral("/Winter Lantern-0");
    draw(images + QStringLiteral("Box - Front") + name + QStringLiteral("1.png"), {540, 720}, QColor(0x2c, 0x4a, 0x6e),
         QStringLiteral("Winter Lantern"));
    draw(images + QStringLiteral("Box - Back") + name + QStringLiteral("1.png"), {540, 720}, QColor(0x3a, 0x2c, 0x4e),
         QStringLiteral("Back"));
    draw(images + QStringLiteral("Fanart - Background") + name + QStringLiteral("1.png"), {1280, 720},
         QColor(0x1d, 0x3a, 0x4a), {});
    draw(images + QStringLiteral("Clear Logo") + name + QStringLiteral("1.png"), {640, 160}, QColor(0xff, 0xe2, 0x9a),
         QStringLiteral("LANTERN"), true);
    for (int shot = 1; shot <= 4; ++shot)
        draw(images + QStringLiteral("Screenshot - Gameplay") + name + QString::number(shot) + QStringLiteral(".png"),
             {320, 200}, QColor::fromHsv(50 * shot, 120, 90), QStringLiteral("Shot %1").arg(shot));
    draw(images + QStringLiteral("Box - Front/Copper Meridian (CD Version)-01.png"), {540, 720},
         QColor(0x7a, 0x45, 0x22), QStringLiteral("Copper Meridian"));
}

} // namespace

void DetailCollection::write(const QString &folder) {
    const QByteArray head = "<?xml version=\"1.0\" standalone=\"yes\"?>\n<LaunchBox>\n";
    QByteArray games =
        game(1, everything, QStringLiteral("MS-DOS"), everythingOfTheRest()) +
        game(2, plain, QStringLiteral("MS-DOS")) + game(3, critical, QStringLiteral("MS-DOS"), known()) +
        game(4, grouped, QStringLiteral("MS-DOS"), known()) + game(5, groupedOther, QStringLiteral("MS-DOS"), known()) +
        game(6, longTitle, QStringLiteral("MS-DOS"), known()) + game(7, rightToLeft, QStringLiteral("MS-DOS"), known());
    games += application(1, QStringLiteral("Manual"), QStringLiteral("Manuals\\MS-DOS\\winter.pdf"));
    games += application(2, QStringLiteral("Soundtrack"), QStringLiteral("eXo\\Soundtracks\\winter.bat"));
    for (int i = 3; i <= 40; ++i)
        games += application(i, QStringLiteral("Chart of the bay, sheet %1").arg(i),
                             QStringLiteral("eXo\\charts\\sheet%1.txt").arg(i));
    FixtureCollection::put(folder + QStringLiteral("/Data/Platforms/MS-DOS.xml"), head + games + "</LaunchBox>\n");
    FixtureCollection::put(folder + QStringLiteral("/Data/Platforms/ScummVM.xml"),
                           head + game(8, QStringLiteral("Copper Meridian"), QStringLiteral("ScummVM"), known()) +
                               "</LaunchBox>\n");
    FixtureCollection::put(
        folder + QStringLiteral("/Data/Platforms.xml"),
        head + "  <Platform>\n    <Name>MS-DOS</Name>\n  </Platform>\n  <Platform>\n    <Name>ScummVM</Name>\n  "
               "</Platform>\n</LaunchBox>\n");
    for (int i = 1; i <= 8; ++i)
        FixtureCollection::put(QStringLiteral("%1/eXo/eXoDOS/!dos/det%2/dosbox.conf").arg(folder).arg(i),
                               "[autoexec]\n");
    const QString extras = folder + QStringLiteral("/eXo/eXoDOS/!dos/det1/Extras/");
    for (const char *name : {"Letter from the publisher.txt", "Map of the bay.png", "Trailer.mp4", "Walkthrough.uhs",
                             "Advertisement.pdf", "Interview.mp3", "Old/Setup.exe", "Sources.7z"})
        FixtureCollection::put(extras + QString::fromLatin1(name), QByteArray(2048, 'x'));
    FixtureCollection::put(folder + QStringLiteral("/Manuals/MS-DOS/winter.pdf"), "%PDF-1.4\n");
    FixtureCollection::put(folder + QStringLiteral("/Videos/MS-DOS/Winter Lantern.mp4"), "video");
    FixtureCollection::put(folder + QStringLiteral("/Music/MS-DOS/Winter Lantern.mp3"), "music");
    // Versions are told apart by the folders of the installed game.
    const QString data = folder + QStringLiteral("/eXo/eXoDOS/det4/");
    for (const char *name : {"EGA/GAME.EXE", "EGA/MT32/X.DRV", "EGA/ADLIB/X.DRV", "talkie/GAME.EXE"})
        FixtureCollection::put(data + QString::fromLatin1(name), "MZ");
    writePictures(folder);
}

} // namespace ludarium::test
