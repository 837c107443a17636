#include "support/FixtureCollection.h"

#include "Views/TitleArt.h"

#include <QDir>
#include <QFile>
#include <QMap>
#include <QPainter>
#include <stdexcept>

namespace ludarium::test {

namespace {

QByteArray gameXml(const FixtureCollection::Entry &entry, int number) {
    const QString folder = QStringLiteral("fix%1").arg(number);
    QString xml =
        QStringLiteral("  <Game>\n    <ID>fixture-%1</ID>\n    <Title>%2</Title>\n    <Platform>%3</Platform>\n")
            .arg(QString::number(number), entry.title.toHtmlEscaped(), entry.platform.toHtmlEscaped());
    xml += QStringLiteral("    <CommunityStarRating>%1</CommunityStarRating>\n").arg(2 + number % 6 * 0.5);
    xml += QStringLiteral("    <ReleaseDate>%1-04-02T00:00:00-05:00</ReleaseDate>\n").arg(entry.year);
    xml += QStringLiteral("    <Developer>%1</Developer>\n    <Publisher>%1</Publisher>\n    <Genre>%2</Genre>\n")
               .arg(entry.developer.toHtmlEscaped(), entry.genre.toHtmlEscaped());
    xml += QStringLiteral("    <Notes>%1 starts on a quiet evening and ends under another sky. Between the two lie "
                          "nine chapters, a crew that keeps its secrets, and a map that is never quite right.\n\nIt "
                          "came on three disks, with a poster that few have kept.</Notes>\n")
               .arg(entry.title.toHtmlEscaped());
    xml += QStringLiteral("    <ApplicationPath>eXo\\eXoDOS\\!dos\\%1\\%2.bat</ApplicationPath>\n")
               .arg(folder, entry.title.toHtmlEscaped().remove(QLatin1Char(':')));
    return (xml + QStringLiteral("  </Game>\n")).toUtf8();
}

void drawCover(const QString &path, const QString &title, int number) {
    const double hue = titleHue(title);
    const QSize size = number % 3 == 0 ? QSize(560, 560) : number % 3 == 1 ? QSize(540, 720) : QSize(560, 800);
    QImage image(size, QImage::Format_RGB32);
    QPainter painter(&image);
    painter.setRenderHint(QPainter::Antialiasing);
    QLinearGradient sky(0, 0, 0, size.height());
    sky.setColorAt(0, QColor::fromHslF(float(hue), 0.45f, 0.2f));
    sky.setColorAt(1, QColor::fromHslF(float(hue), 0.6f, 0.55f));
    painter.fillRect(image.rect(), sky);
    painter.setPen(Qt::NoPen);
    for (int hill = 0; hill < 3; ++hill) {
        painter.setBrush(QColor::fromHslF(float(hue), 0.5f, 0.34f - 0.09f * float(hill)));
        painter.drawEllipse(QPointF(size.width() * (0.2 + 0.35 * ((number + hill) % 3)), size.height() * 1.05),
                            size.width() * 0.55, size.height() * (0.5 - 0.12 * hill));
    }
    painter.setBrush(QColor::fromHslF(float(hue), 0.35f, 0.85f));
    painter.drawEllipse(QPointF(size.width() * 0.72, size.height() * 0.3), 56, 56);
    QFont font(painter.font());
    font.setPixelSize(54);
    font.setBold(true);
    painter.setFont(font);
    painter.setPen(Qt::white);
    painter.drawText(image.rect().adjusted(40, 40, -40, -40), Qt::AlignTop | Qt::AlignLeft | Qt::TextWordWrap, title);
    painter.end();
    QDir().mkpath(QFileInfo(path).path());
    if (!image.save(path, nullptr, 85))
        throw std::runtime_error("cannot write " + path.toStdString());
}

/// "Rainy Evenings" nests "Short Ones"; one of its games is listed twice and one is not in the collection.
void writePlaylists(const QString &folder, const QByteArray &head) {
    const auto playlist = [&](const char *id, const char *name, const char *nested, const QList<const char *> &games) {
        QByteArray xml =
            head + "  <Playlist>\n    <PlaylistId>" + id + "</PlaylistId>\n    <Name>" + name + "</Name>\n";
        if (*nested)
            xml += QByteArray("    <NestedPlaylistId>") + nested + "</NestedPlaylistId>\n";
        xml += "  </Playlist>\n";
        for (const char *game : games)
            xml += QByteArray("  <PlaylistGame>\n    <GameId>") + game + "</GameId>\n    <PlaylistId>" + id +
                   "</PlaylistId>\n  </PlaylistGame>\n";
        FixtureCollection::put(folder + QLatin1StringView(name) + QStringLiteral(".xml"), xml + "</LaunchBox>\n");
    };
    playlist("list-rain", "Rainy Evenings", "list-short", {"fixture-1", "fixture-2", "fixture-2", "gone"});
    playlist("list-short", "Short Ones", "", {"fixture-3"});
    playlist("list-couch", "On the Couch", "", {"fixture-4", "fixture-5", "fixture-6"});
}

} // namespace

void FixtureCollection::put(const QString &path, const QByteArray &content) {
    QDir().mkpath(QFileInfo(path).path());
    QFile file(path);
    if (!file.open(QIODevice::WriteOnly) || file.write(content) != content.size())
        throw std::runtime_error("cannot write " + path.toStdString());
}

const QList<FixtureCollection::Entry> &FixtureCollection::entries() {
    static const QList<Entry> list = [] {
        const QStringList places{QStringLiteral("Harbor"),   QStringLiteral("Circuit"), QStringLiteral("Orchard"),
                                 QStringLiteral("Meridian"), QStringLiteral("Quarry"),  QStringLiteral("Lantern")};
        const QStringList openings{QStringLiteral("Amber"),  QStringLiteral("Hollow"), QStringLiteral("Distant"),
                                   QStringLiteral("Copper"), QStringLiteral("Winter"), QStringLiteral("Paper")};
        const QStringList platforms{QStringLiteral("MS-DOS"),  QStringLiteral("MS-DOS"), QStringLiteral("Windows 3x"),
                                    QStringLiteral("ScummVM"), QStringLiteral("MS-DOS"), QStringLiteral("Apple IIGS")};
        const QStringList developers{QStringLiteral("Northlight Software"), QStringLiteral("Blue Anvil"),
                                     QStringLiteral("Cardinal Works")};
        const QStringList genres{QStringLiteral("Adventure"), QStringLiteral("Action; Platform"),
                                 QStringLiteral("Strategy"), QStringLiteral("Role-Playing")};
        QList<Entry> made;
        for (int i = 0; i < places.size() * openings.size(); ++i) {
            QString title = openings[i / places.size()] + QLatin1Char(' ') + places[i % places.size()];
            if (i % 7 == 3)
                title += QStringLiteral(": The Keeper's Return");
            made.append({title, platforms[i % platforms.size()], 1984 + i % 13, developers[i % developers.size()],
                         genres[i % genres.size()], i % 5 != 4});
        }
        return made;
    }();
    return list;
}

QList<FixtureCollection::Entry> FixtureCollection::entriesWithVariants() {
    QList<Entry> made = entries();
    for (int i = 0; i < 6; ++i) {
        Entry variant = made[i];
        variant.title += QStringLiteral(" (CD)");
        variant.platform = QStringLiteral("DREAMM");
        made.append(variant);
    }
    const QString long300 = QStringLiteral("A Very Long Title That Goes On And On ").repeated(8).left(300);
    for (const QString &title : {long300, QStringLiteral("مغامرات في الصحراء البعيدة"),
                                 QStringLiteral("👾🚀 Star 🦖 Party 🎉"), QStringLiteral("<b>Bold</b> & Co.")})
        made.append(
            {title, QStringLiteral("DREAMM"), 1999, QStringLiteral("Blue Anvil"), QStringLiteral("Strategy"), false});
    return made;
}

void FixtureCollection::write(const QString &folder, const QList<Entry> &games) {
    QMap<QString, QByteArray> files;
    int number = 0;
    for (const Entry &entry : games) {
        files[entry.platform] += gameXml(entry, ++number);
        put(QStringLiteral("%1/eXo/eXoDOS/!dos/fix%2/dosbox.conf").arg(folder).arg(number), "[autoexec]\n");
        if (!entry.hasCover)
            continue;
        QString name = entry.title;
        name.replace(QLatin1Char(':'), QLatin1Char('_')).replace(QLatin1Char('\''), QLatin1Char('_'));
        drawCover(QStringLiteral("%1/Images/%2/Box - Front/%3-01.jpg").arg(folder, entry.platform, name), entry.title,
                  number);
    }
    const QByteArray head = "<?xml version=\"1.0\" standalone=\"yes\"?>\n<LaunchBox>\n";
    QByteArray platforms = head;
    for (auto it = files.cbegin(); it != files.cend(); ++it) {
        put(QStringLiteral("%1/Data/Platforms/%2.xml").arg(folder, it.key()), head + it.value() + "</LaunchBox>\n");
        platforms += "  <Platform>\n    <Name>" + it.key().toUtf8() + "</Name>\n  </Platform>\n";
    }
    put(folder + QStringLiteral("/Data/Platforms.xml"), platforms + "</LaunchBox>\n");
    writePlaylists(folder + QStringLiteral("/Data/Playlists/"), head);
}

} // namespace ludarium::test
