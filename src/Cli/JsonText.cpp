#include "Cli/JsonText.h"

#include "Cli/Output.h"

#include <nlohmann/json.hpp>

namespace ludarium {

namespace {

/// One element as UTF-8. JSON leaves DEL and the C1 control characters as they are; a terminal obeys them.
QByteArray serialized(const Json &json, int indent) {
    const std::string text = json.dump(indent, ' ', false, Json::error_handler_t::replace);
    QByteArray result;
    result.reserve(qsizetype(text.size()));
    for (size_t i = 0; i < text.size(); ++i) {
        const uchar byte = uchar(text[i]);
        if (byte == 0x7F)
            result += "\\u007f";
        else if (byte == 0xC2 && i + 1 < text.size() && uchar(text[i + 1]) < 0xA0)
            result += "\\u00" + QByteArray::number(uint(uchar(text[++i])), 16);
        else
            result += text[i];
    }
    return result;
}

} // namespace

Json jsonText(const QString &text) {
    return text.toStdString();
}

void addText(Json &object, const char *key, const QString &text) {
    if (!text.isEmpty())
        object[key] = jsonText(text);
}

Json jsonTexts(const QStringList &texts) {
    Json list = Json::array();
    for (const QString &text : texts)
        list.push_back(jsonText(text));
    return list;
}

void addTexts(Json &object, const char *key, const QStringList &texts) {
    if (!texts.isEmpty())
        object[key] = jsonTexts(texts);
}

void addInstant(Json &object, const char *key, const std::optional<QDateTime> &moment) {
    if (moment && moment->isValid())
        object[key] = moment->toUTC().toString(Qt::ISODate).toStdString();
}

Json jsonDocument() {
    Json document = Json::object();
    document["schema"] = jsonSchema;
    return document;
}

void printJson(Output &output, const Json &document) {
    output.write(serialized(document, 2) + '\n');
}

JsonList::JsonList(Output &output, const char *key) : m_output(output) {
    m_output.write("{\"schema\":" + QByteArray::number(jsonSchema) + ",\"" + key + "\":[");
}

void JsonList::add(const Json &element) {
    m_output.write(m_first ? "\n" : ",\n");
    m_output.write(serialized(element, -1));
    m_first = false;
}

void JsonList::finish() {
    m_output.write("\n]}\n");
}

} // namespace ludarium
