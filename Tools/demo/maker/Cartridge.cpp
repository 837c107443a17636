#include "maker/Cartridge.h"

#include "maker/Dice.h"
#include "maker/PixelFont.h"

#include <QStringList>

namespace ludarium::demo {

namespace {

// Machine code with forward references by offset: appends bytes and tells where it is.
class Code {
  public:
    explicit Code(int origin) : m_origin(origin) {}
    Code &put(std::initializer_list<int> bytes) {
        for (const int byte : bytes)
            m_bytes.append(static_cast<char>(byte));
        return *this;
    }
    int here() const { return m_origin + static_cast<int>(m_bytes.size()); }
    /// A relative jump back to `target` with a two-byte instruction.
    Code &jumpBack(int instruction, int target) { return put({instruction, (target - here() - 2) & 0xff}); }
    const QByteArray &bytes() const { return m_bytes; }

  private:
    int m_origin;
    QByteArray m_bytes;
};

// The title in lines of at most `width` letters.
QStringList lines(const QString &title, int width) {
    QStringList result;
    QString line;
    for (const QString &word : title.toUpper().split(u' ')) {
        if (!line.isEmpty() && line.size() + 1 + word.size() > width) {
            result.append(line);
            line.clear();
        }
        line += (line.isEmpty() ? QString() : QStringLiteral(" ")) + word;
    }
    result.append(line);
    return result;
}

constexpr char letterSet[] = " ABCDEFGHIJKLMNOPQRSTUVWXYZ0123456789&'-:.!";

int letterTile(QChar letter) {
    const QChar plain = QString(letter).normalized(QString::NormalizationForm_D).at(0).toUpper();
    const qsizetype index = QByteArray(letterSet).indexOf(plain.toLatin1());
    return index < 0 ? 0 : static_cast<int>(index);
}

// The rows of a tile of one colour: eight bytes.
QByteArray letterRows(char letter) {
    QByteArray rows(8, '\0');
    const auto shape = pixelLetter(QLatin1Char(letter));
    for (size_t row = 0; row < 7; ++row)
        rows[static_cast<qsizetype>(row)] = static_cast<char>(shape[row] << 2);
    return rows;
}

constexpr int hillTile = 48;  // a full dark tile
constexpr int slopeTile = 49; // its upper edge, a triangle
constexpr int starTile = 50;

// Puts the title's lines into a map of `stride` tiles a row.
void putTitle(QByteArray &map, const QString &title, int firstRow, int columns, int stride) {
    int row = firstRow;
    for (const QString &line : lines(title, columns - 2)) {
        const int left = (columns - static_cast<int>(line.size())) / 2;
        for (int i = 0; i < line.size(); ++i)
            map[row * stride + left + i] = static_cast<char>(letterTile(line[i]));
        row += 2;
    }
}

} // namespace

QByteArray pocketCartridge(const QString &title) {
    constexpr int tilesAt = 0x1000;
    constexpr int mapAt = 0x2000;
    QByteArray rom(0x8000, '\0');
    // Two bytes a row, low and high bit of the colour.
    for (int tile = 0; letterSet[tile]; ++tile) {
        const QByteArray rows = letterRows(letterSet[tile]);
        for (int row = 0; row < 8; ++row) {
            rom[tilesAt + tile * 16 + row * 2] = rows[row];
            rom[tilesAt + tile * 16 + row * 2 + 1] = rows[row];
        }
    }
    for (int row = 0; row < 8; ++row) {
        rom[tilesAt + hillTile * 16 + row * 2 + 1] = static_cast<char>(0xff);
        rom[tilesAt + slopeTile * 16 + row * 2 + 1] = static_cast<char>(0xff >> (7 - row));
    }
    rom[tilesAt + starTile * 16 + 6] = 0x10;
    rom[tilesAt + starTile * 16 + 8] = 0x38;
    rom[tilesAt + starTile * 16 + 10] = 0x10;

    QByteArray map(32 * 32, '\0');
    Dice dice(title);
    for (int i = 0; i < 24; ++i)
        map[dice.below(10) * 32 + dice.below(32)] = starTile;
    int top = 14;
    for (int column = 0; column < 32; ++column) {
        for (int row = top; row < 32; ++row)
            map[row * 32 + column] = hillTile;
        map[top * 32 + column] = slopeTile;
        top = qBound(12, top + dice.below(3) - 1, 16);
    }
    putTitle(map, title, 4, 20, 32);
    rom.replace(mapAt, map.size(), map);

    Code code(0x0150);
    code.put({0xF3, 0x31, 0xFE, 0xFF}); // DI; LD SP,$FFFE
    const int wait = code.here();
    code.put({0xF0, 0x44, 0xFE, 0x90}).jumpBack(0x20, wait); // until line 144: LDH A,($44); CP 144; JR NZ
    code.put({0xAF, 0xE0, 0x40});                            // display off: XOR A; LDH ($40),A
    const auto copy = [&code](int from, int to, int size) {
        code.put({0x21, from & 0xff, from >> 8, 0x11, to & 0xff, to >> 8, 0x01, size & 0xff, size >> 8}); // HL, DE, BC
        const int next = code.here();
        code.put({0x2A, 0x12, 0x13, 0x0B, 0x78, 0xB1}).jumpBack(0x20, next); // LD A,(HL+); LD (DE),A; INC DE; DEC BC; …
    };
    copy(tilesAt, 0x8000, 64 * 16);
    copy(mapAt, 0x9800, 32 * 32);
    code.put({0x3E, 0xE4, 0xE0, 0x47});       // palette: LD A,$E4; LDH ($47),A
    code.put({0xAF, 0xE0, 0x42, 0xE0, 0x43}); // scroll to 0
    code.put({0x3E, 0x91, 0xE0, 0x40});       // display on
    // For ever: the upper part stands still, the hills below line 88 scroll by.
    const int frame = code.here();
    const int blank = code.here();
    code.put({0xF0, 0x44, 0xFE, 0x90}).jumpBack(0x20, blank);
    code.put({0x04, 0xAF, 0xE0, 0x43}); // INC B; XOR A; LDH ($43),A
    const int middle = code.here();
    code.put({0xF0, 0x44, 0xFE, 0x58}).jumpBack(0x20, middle);
    code.put({0x78, 0xCB, 0x3F, 0xE0, 0x43}); // LD A,B; SRL A; LDH ($43),A
    code.put({0xC3, frame & 0xff, frame >> 8});
    rom.replace(0x150, code.bytes().size(), code.bytes());

    rom.replace(0x100, 4, QByteArray("\x00\xC3\x50\x01", 4)); // NOP; JP $0150
    QByteArray name;
    for (const QChar letter : title.toUpper())
        if (name.size() < 11)
            name.append(letter.unicode() < 128 ? letter.toLatin1() : '-');
    rom.replace(0x134, name.size(), name);
    int sum = 0;
    for (int at = 0x134; at <= 0x14C; ++at)
        sum = sum - static_cast<unsigned char>(rom[at]) - 1;
    rom[0x14D] = static_cast<char>(sum & 0xff);
    int total = 0;
    for (const char byte : rom)
        total += static_cast<unsigned char>(byte);
    rom[0x14E] = static_cast<char>(total >> 8 & 0xff);
    rom[0x14F] = static_cast<char>(total & 0xff);
    return rom;
}

QByteArray homeCartridge(const QString &title) {
    constexpr int origin = 0xC000;
    QByteArray program(0x4000, '\0');
    QByteArray pictures(0x2000, '\0');
    // Eight bytes of the low bit, then eight of the high bit.
    for (int tile = 0; letterSet[tile]; ++tile) {
        const QByteArray rows = letterRows(letterSet[tile]);
        pictures.replace(tile * 16, 8, rows);
        pictures.replace(tile * 16 + 8, 8, rows);
    }
    for (int row = 0; row < 8; ++row) {
        pictures[hillTile * 16 + 8 + row] = static_cast<char>(0xff);
        pictures[slopeTile * 16 + 8 + row] = static_cast<char>(0xff >> (7 - row));
    }
    pictures[starTile * 16 + 3] = 0x10;
    pictures[starTile * 16 + 4] = 0x38;
    pictures[starTile * 16 + 5] = 0x10;

    QByteArray map(1024, '\0'); // 32 by 30 tiles, then 64 bytes of attributes
    Dice dice(title);
    for (int i = 0; i < 40; ++i)
        map[(1 + dice.below(16)) * 32 + dice.below(32)] = starTile;
    int top = 22;
    for (int column = 0; column < 32; ++column) {
        for (int row = top; row < 30; ++row)
            map[row * 32 + column] = hillTile;
        map[top * 32 + column] = slopeTile;
        top = qBound(19, top + dice.below(3) - 1, 25);
    }
    putTitle(map, title, 7, 32, 32);
    constexpr int mapAt = 0xD000;
    program.replace(mapAt - origin, map.size(), map);
    constexpr int paletteAt = 0xD800;
    const int hue = 1 + dice.below(12);
    const QByteArray palette = QByteArray("\x0F\x30", 2) + static_cast<char>(hue) + static_cast<char>(0x30);
    program.replace(paletteAt - origin, 4, palette);

    Code code(origin);
    code.put({0x78, 0xD8, 0xA2, 0xFF, 0x9A});                   // SEI; CLD; LDX #$FF; TXS
    code.put({0xA9, 0x00, 0x8D, 0x00, 0x20, 0x8D, 0x01, 0x20}); // picture unit off
    for (int i = 0; i < 2; ++i) {                               // two frames until it is warm
        const int wait = code.here();
        code.put({0x2C, 0x02, 0x20}).jumpBack(0x10, wait); // BIT $2002; BPL
    }
    code.put({0xA9, 0x3F, 0x8D, 0x06, 0x20, 0xA9, 0x00, 0x8D, 0x06, 0x20, 0xA2, 0x00}); // palette at $3F00
    const int color = code.here();
    code.put({0xBD, paletteAt & 0xff, paletteAt >> 8, 0x8D, 0x07, 0x20, 0xE8, 0xE0, 0x04}).jumpBack(0xD0, color);
    code.put({0xA9, 0x20, 0x8D, 0x06, 0x20, 0xA9, 0x00, 0x8D, 0x06, 0x20}); // map at $2000
    for (int page = 0; page < 4; ++page) {
        code.put({0xA2, 0x00});
        const int next = code.here();
        code.put({0xBD, 0x00, (mapAt >> 8) + page, 0x8D, 0x07, 0x20, 0xE8}).jumpBack(0xD0, next);
    }
    const int blank = code.here();
    code.put({0x2C, 0x02, 0x20}).jumpBack(0x10, blank);
    code.put({0xA9, 0x00, 0x8D, 0x05, 0x20, 0x8D, 0x05, 0x20}); // scroll to 0
    code.put({0xA9, 0x0A, 0x8D, 0x01, 0x20});                   // background on
    const int forever = code.here();
    code.put({0x4C, forever & 0xff, forever >> 8});
    const int ignore = code.here();
    code.put({0x40}); // RTI
    program.replace(0, code.bytes().size(), code.bytes());
    for (const auto &[at, target] : {std::pair{0x3FFA, ignore}, std::pair{0x3FFC, origin}, std::pair{0x3FFE, ignore}}) {
        program[at] = static_cast<char>(target & 0xff);
        program[at + 1] = static_cast<char>(target >> 8);
    }
    return QByteArray("NES\x1A\x01\x01\x00\x00", 8) + QByteArray(8, '\0') + program + pictures;
}

} // namespace ludarium::demo
