#include "Cli/Table.h"

#include "Cli/Output.h"
#include "Cli/TerminalText.h"

#include <algorithm>

namespace ludarium {

namespace {
constexpr int gap = 2;
constexpr int smallestFlexibleWidth = 16;

QString withoutTrailingBlanks(QString line) {
    while (line.endsWith(u' '))
        line.chop(1);
    return line;
}
} // namespace

Table::Table(QStringList headings, int flexible) : m_headings(std::move(headings)), m_flexible(flexible) {}

void Table::add(const QStringList &cells) {
    Row row;
    for (const QString &cell : cells)
        row.cells << escapedForTerminal(cell);
    m_rows << row;
}

void Table::addFaint(const QStringList &cells) {
    add(cells);
    m_rows.last().faint = true;
}

void Table::print(Output &output) const {
    QList<int> widths;
    int total = -gap;
    for (qsizetype column = 0; column < m_headings.size(); ++column) {
        int width = displayWidth(m_headings[column]);
        for (const Row &row : m_rows)
            width = std::max(width, displayWidth(row.cells.value(column)));
        widths << width;
        total += width + gap;
    }
    if (output.columns() > 0 && total > output.columns())
        widths[m_flexible] = std::max(smallestFlexibleWidth, widths[m_flexible] - (total - output.columns()));

    const auto print = [&](const QStringList &cells, Output::Style style) {
        QString line;
        for (qsizetype column = 0; column < widths.size(); ++column) {
            const bool last = column + 1 == widths.size();
            const QString cell = elided(cells.value(column), widths[column]);
            line += last ? cell : padded(cell, widths[column] + gap);
        }
        output.line(withoutTrailingBlanks(line), style);
    };
    print(m_headings, Output::Style::strong);
    for (const Row &row : m_rows) {
        if (output.readerGone())
            return;
        print(row.cells, row.faint ? Output::Style::faint : Output::Style::plain);
    }
}

void FieldList::add(const QString &name, const QString &value) {
    if (!value.isEmpty())
        m_fields.append({name + u':', value});
}

void FieldList::print(Output &output) const {
    int width = 0;
    for (const auto &[name, value] : m_fields)
        width = std::max(width, displayWidth(name));
    const QString indent(width + gap, u' ');
    for (const auto &[name, value] : m_fields) {
        QString prefix = padded(name, width + gap);
        for (QStringView line : QStringView(value).split(u'\n')) {
            if (line.endsWith(u'\r'))
                line.chop(1);
            output.line(withoutTrailingBlanks(prefix + escapedForTerminal(line)));
            prefix = indent;
        }
    }
}

} // namespace ludarium
