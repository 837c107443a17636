#include "Cli/Table.h"

#include "Cli/Output.h"
#include "Cli/TerminalText.h"

#include <algorithm>

using namespace Qt::StringLiterals;

namespace ludarium {

namespace {
constexpr int gap = 2;
constexpr int wantedFlexibleWidth = 30;
constexpr int smallestFlexibleWidth = 16;
/// Eight characters of an id still name a thing.
constexpr int shortIdWidth = 9;

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

void Table::fit(QList<int> &widths, int columns) const {
    int excess = int(widths.size() - 1) * gap - columns;
    for (const int width : std::as_const(widths))
        excess += width;
    const auto shrink = [&](qsizetype column, int smallest) {
        const int by = std::clamp(widths[column] - smallest, 0, std::max(0, excess));
        widths[column] -= by;
        excess -= by;
    };
    shrink(m_flexible, wantedFlexibleWidth);
    const qsizetype ids = m_headings.indexOf(u"ID"_s);
    if (ids >= 0)
        shrink(ids, shortIdWidth);
    shrink(m_flexible, smallestFlexibleWidth);
    // A shorter id cannot be used any more.
    for (const auto &[smallest, idsToo] : {std::pair{8, false}, {4, false}, {1, true}}) {
        while (excess > 0) {
            qsizetype widest = -1;
            for (qsizetype column = 0; column < widths.size(); ++column)
                if (widths[column] > smallest && (idsToo || column != ids) &&
                    (widest < 0 || widths[column] > widths[widest]))
                    widest = column;
            if (widest < 0)
                break;
            shrink(widest, widths[widest] - 1);
        }
    }
}

void Table::print(Output &output) const {
    QList<int> widths;
    for (qsizetype column = 0; column < m_headings.size(); ++column) {
        int width = displayWidth(m_headings[column]);
        for (const Row &row : m_rows)
            width = std::max(width, displayWidth(row.cells.value(column)));
        widths << width;
    }
    if (output.columns() > 0)
        fit(widths, output.columns());

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
