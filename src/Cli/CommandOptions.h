#pragma once

#include <QString>
#include <QStringList>
#include <optional>

namespace CLI {
class App;
}

namespace ludarium {

/// Declares what a command takes. Texts arrive as the file system's text encoding has them; each bound variable must
/// live as long as the parser.
class CommandOptions {
  public:
    explicit CommandOptions(CLI::App &app) : m_app(app) {}

    /// A required argument by its place; an empty text is wrong usage.
    void argument(const char *name, QString &value, const char *description);
    /// One that may be left out.
    void optionalArgument(const char *name, QString &value, const char *description);
    /// Any number of them, behind the others; an empty text is wrong usage.
    void arguments(const char *name, QStringList &values, const char *description);
    /// One that may be left out and is one of `choices`.
    void choiceArgument(const char *name, QString &value, const QStringList &choices, const char *description);
    /// One that may be left out and is a whole number between two, both included.
    void numberArgument(const char *name, std::optional<int> &value, int smallest, int largest,
                        const char *description);
    /// "--search TEXT"
    void text(const char *option, const char *valueName, QString &value, const char *description);
    /// A folder, made absolute; an empty text is wrong usage.
    void folder(const char *option, const char *valueName, QString &value, const char *description);
    /// The same as a required argument by its place.
    void folderArgument(const char *name, QString &value, const char *description);
    /// A whole number from 0 on.
    void number(const char *option, const char *valueName, std::optional<int> &value, const char *description);
    /// "--sort title|year": one of `choices`.
    void choice(const char *option, QString &value, const QStringList &choices, const char *description);
    void flag(const char *option, bool &value, const char *description);
    /// The two options cannot be given together.
    void exclusive(const char *option, const char *other);

  private:
    CLI::App &m_app;
};

} // namespace ludarium
