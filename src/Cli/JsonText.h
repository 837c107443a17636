#pragma once

#include <nlohmann/json_fwd.hpp>

#include <QByteArray>
#include <QDateTime>
#include <QString>
#include <QStringList>
#include <optional>

namespace ludarium {

class Output;
struct AdditionalApplication;
struct Game;
struct LaunchPlan;
struct Platform;
struct Playlist;

/// Keeps its members in the order in which they are added.
using Json = nlohmann::ordered_json;

/// Version of the shape of what `--json` prints: the member "schema" of every document.
inline constexpr int jsonSchema = 1;

Json jsonText(const QString &text);
Json jsonTexts(const QStringList &texts);
/// Adds a member unless the text is null.
void addText(Json &object, const char *key, const QString &text);
/// Adds a moment in ISO form, in UTC, unless there is none.
void addInstant(Json &object, const char *key, const std::optional<QDateTime> &moment);

/// A record by its serial names, fields without a value left out: numbers as numbers, flags as booleans, dates in ISO
/// form (a collection's dates are wall-clock times without a zone). What the user and the disk add follows under the
/// names "installed", "compressed", "downloadable", …
Json toJson(const Game &game);
Json toJson(const AdditionalApplication &application);
Json toJson(const Platform &platform);
Json toJson(const Playlist &playlist);
/// The members of a plan. The content of a file is text, or Base64 under "contentBase64" when it is not UTF-8.
Json toJson(const LaunchPlan &plan);

/// Starts a document: an object that holds "schema".
Json jsonDocument();
/// Prints a document, indented, with a line end.
void printJson(Output &output, const Json &document);

/// A document of one list, printed element by element, each on a line: {"schema":1,"KEY":[…]}.
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
