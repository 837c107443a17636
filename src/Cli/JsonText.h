#pragma once

#include <nlohmann/json_fwd.hpp>

#include <QByteArray>
#include <QDateTime>
#include <QString>
#include <QStringList>
#include <optional>

namespace ludarium {

class Output;

/// Keeps its members in the order in which they are added.
using Json = nlohmann::ordered_json;

/// Version of the shape of what `--json` prints: the member "schema" of every document.
inline constexpr int jsonSchema = 2;

Json jsonText(const QString &text);
Json jsonTexts(const QStringList &texts);
/// Adds a member unless the text is empty.
void addText(Json &object, const char *key, const QString &text);
/// The same for a list.
void addTexts(Json &object, const char *key, const QStringList &texts);
/// Adds a moment in ISO form, in UTC, unless there is none.
void addInstant(Json &object, const char *key, const std::optional<QDateTime> &moment);

/// Starts a document: an object that holds "schema".
Json jsonDocument();
/// Prints a document, indented, with a line end.
void printJson(Output &output, const Json &document);

/// A document of one list, printed element by element, each on a line: {"schema":2,"KEY":[…]}.
class JsonList {
  public:
    JsonList(Output &output, const char *key);
    void add(const Json &element);
    /// Closes the list and the document.
    void finish();

  private:
    Output &m_output;
    bool m_first = true;
};

} // namespace ludarium
