#include "maker/Media.h"

#include <QStringList>

namespace ludarium::demo {

namespace {

QByteArray pdfText(const QString &text) {
    QByteArray bytes = text.toLatin1(); // the typeface's encoding agrees with Latin-1 in all that the texts use
    bytes.replace("\\", "\\\\").replace("(", "\\(").replace(")", "\\)");
    return '(' + bytes + ')';
}

QStringList wrapped(const QString &text, int width) {
    QStringList lines;
    for (const QString &paragraph : text.split(u'\n')) {
        QString line;
        for (const QString &word : paragraph.split(u' ')) {
            if (!line.isEmpty() && line.size() + 1 + word.size() > width) {
                lines.append(line);
                line.clear();
            }
            line += (line.isEmpty() ? QString() : QStringLiteral(" ")) + word;
        }
        lines.append(line);
    }
    return lines;
}

QByteArray page(const QString &heading, const QString &text, const QString &foot) {
    QByteArray content = "0.16 0.20 0.34 rg 0 730 420 10 re f 0 0 420 24 re f 0 0 0 rg\n";
    content += "BT /F2 20 Tf 36 690 Td " + pdfText(heading) + " Tj ET\n";
    content += "BT /F1 11 Tf 36 656 Td 15 TL\n";
    for (const QString &line : wrapped(text, 62))
        content += pdfText(line) + " Tj T*\n";
    content += "ET\nBT 1 1 1 rg /F1 9 Tf 36 8 Td " + pdfText(foot) + " Tj ET\n";
    return content;
}

} // namespace

QByteArray manual(const DemoGame &game) {
    const QString controls =
        game.genre.contains(QStringLiteral("Fiction"))
            ? QStringLiteral("You play by typing. NORTH, SOUTH, EAST and WEST walk; LOOK, EXAMINE, TAKE, DROP and USE "
                             "do what they say.\n\nHELP lists all verbs. Esc leaves for DOS.")
            : QStringLiteral(
                  "The arrow keys move. Space acts, where there is something to act on. Esc ends the game and keeps "
                  "your best score in SCORE.DAT.\n\nStart the program with /D to see it play by itself.");
    const QString name = game.title.size() > 34 ? game.title.section(u':', 0, 0).left(34) : game.title;
    const QByteArray pages[] = {
        page(name, game.notes + QStringLiteral("\n\n") + game.developer + QStringLiteral(", %1").arg(game.year()),
             QStringLiteral("Page 1")),
        page(QStringLiteral("How to play"),
             controls + QStringLiteral("\n\nIf the screen stays dark, check that the lamp of your monitor is lit. If "
                                       "it is, check that the lamp of your "
                                       "computer is lit. If both are, go for a walk and try again."),
             QStringLiteral("Page 2"))};

    QList<QByteArray> objects{"<< /Type /Catalog /Pages 2 0 R >>", "<< /Type /Pages /Kids [5 0 R 7 0 R] /Count 2 >>",
                              "<< /Type /Font /Subtype /Type1 /BaseFont /Helvetica /Encoding /WinAnsiEncoding >>",
                              "<< /Type /Font /Subtype /Type1 /BaseFont /Helvetica-Bold /Encoding /WinAnsiEncoding >>"};
    for (const QByteArray &content : pages) {
        objects.append("<< /Type /Page /Parent 2 0 R /MediaBox [0 0 420 740] /Resources << /Font << /F1 3 0 R /F2 4 0 "
                       "R >> >> /Contents " +
                       QByteArray::number(objects.size() + 2) + " 0 R >>");
        objects.append("<< /Length " + QByteArray::number(content.size()) + " >>\nstream\n" + content + "endstream");
    }
    QByteArray pdf = "%PDF-1.4\n";
    QByteArray table = "0000000000 65535 f \n";
    for (int i = 0; i < objects.size(); ++i) {
        table += QByteArray::number(pdf.size()).rightJustified(10, '0') + " 00000 n \n";
        pdf += QByteArray::number(i + 1) + " 0 obj\n" + objects[i] + "\nendobj\n";
    }
    const QByteArray count = QByteArray::number(objects.size() + 1);
    const QByteArray start = QByteArray::number(pdf.size());
    return pdf + "xref\n0 " + count + "\n" + table + "trailer\n<< /Size " + count + " /Root 1 0 R >>\nstartxref\n" +
           start + "\n%%EOF\n";
}

} // namespace ludarium::demo
