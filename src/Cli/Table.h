#pragma once

#include <QList>
#include <QString>
#include <QStringList>

namespace ludarium {

class Output;

/// Aligned columns. Cells are escaped for the terminal when they are added.
class Table {
  public:
    /// On a terminal the lines fit its width: the column `flexible` shrinks first, then the widest, the ids last, and
    /// what is cut ends in "…". Elsewhere nothing is cut.
    explicit Table(QStringList headings, int flexible = 0);

    void add(const QStringList &cells);
    /// A row that is shown faintly.
    void addFaint(const QStringList &cells);
    void print(Output &output) const;

  private:
    void fit(QList<int> &widths, int columns) const;

    struct Row {
        QStringList cells;
        bool faint = false;
    };
    QStringList m_headings;
    int m_flexible;
    QList<Row> m_rows;
};

/// "Name:    value" lines with their values under one another. A value of several lines keeps them, each indented.
class FieldList {
  public:
    /// Adds nothing when the value is empty.
    void add(const QString &name, const QString &value);
    void print(Output &output) const;

  private:
    QList<std::pair<QString, QString>> m_fields;
};

} // namespace ludarium
