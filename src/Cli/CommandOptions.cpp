#include "Cli/CommandOptions.h"

#include <CLI/CLI.hpp>
#include <QDir>
#include <QFile>

namespace ludarium {

namespace {

QString decoded(const std::string &text) {
    return QFile::decodeName(QByteArray::fromStdString(text));
}

QString absoluteFolder(const std::string &text) {
    return QDir::cleanPath(QDir::current().absoluteFilePath(decoded(text)));
}

const CLI::Validator &notEmpty() {
    static const CLI::Validator validator(
        [](std::string &text) { return text.empty() ? std::string("is empty") : std::string(); }, "");
    return validator;
}

/// What is no whole number at all is refused by the conversion.
const CLI::Validator &notNegative() {
    static const CLI::Validator validator(
        [](std::string &text) { return text.rfind('-', 0) == 0 ? std::string("must not be negative") : std::string(); },
        "");
    return validator;
}

std::vector<std::string> listOf(const QStringList &texts) {
    std::vector<std::string> list;
    for (const QString &text : texts)
        list.push_back(text.toStdString());
    return list;
}

} // namespace

void CommandOptions::argument(const char *name, QString &value, const char *description) {
    m_app
        .add_option_function<std::string>(
            name, [&value](const std::string &text) { value = decoded(text); }, description)
        ->required()
        ->check(notEmpty())
        ->type_name("");
}

void CommandOptions::optionalArgument(const char *name, QString &value, const char *description) {
    m_app
        .add_option_function<std::string>(
            name, [&value](const std::string &text) { value = decoded(text); }, description)
        ->check(notEmpty())
        ->type_name("");
}

void CommandOptions::arguments(const char *name, QStringList &values, const char *description) {
    m_app
        .add_option_function<std::vector<std::string>>(
            name,
            [&values](const std::vector<std::string> &texts) {
                values.clear();
                for (const std::string &text : texts)
                    values.append(decoded(text));
            },
            description)
        ->check(notEmpty())
        ->type_name("");
}

void CommandOptions::choiceArgument(const char *name, QString &value, const QStringList &choices,
                                    const char *description) {
    choice(name, value, choices, description);
    m_app.get_option(name)->type_name("");
}

void CommandOptions::numberArgument(const char *name, std::optional<int> &value, int smallest, int largest,
                                    const char *description) {
    m_app
        .add_option_function<int>(
            name, [&value](const int &number) { value = number; }, description)
        ->check(CLI::Range(smallest, largest))
        ->type_name("");
}

void CommandOptions::choice(const char *option, QString &value, const QStringList &choices, const char *description) {
    m_app
        .add_option_function<std::string>(
            option, [&value](const std::string &text) { value = decoded(text); }, description)
        ->check(CLI::IsMember(listOf(choices)))
        ->type_name("WORD");
}

void CommandOptions::text(const char *option, const char *valueName, QString &value, const char *description) {
    m_app
        .add_option_function<std::string>(
            option, [&value](const std::string &text) { value = decoded(text); }, description)
        ->type_name(valueName);
}

void CommandOptions::folder(const char *option, const char *valueName, QString &value, const char *description) {
    m_app
        .add_option_function<std::string>(
            option, [&value](const std::string &text) { value = absoluteFolder(text); }, description)
        ->check(notEmpty())
        ->type_name(valueName);
}

void CommandOptions::folderArgument(const char *name, QString &value, const char *description) {
    m_app
        .add_option_function<std::string>(
            name, [&value](const std::string &text) { value = absoluteFolder(text); }, description)
        ->required()
        ->check(notEmpty())
        ->type_name("");
}

void CommandOptions::number(const char *option, const char *valueName, std::optional<int> &value,
                            const char *description) {
    m_app
        .add_option_function<int>(
            option, [&value](const int &number) { value = number; }, description)
        ->check(notNegative())
        ->type_name(valueName);
}

void CommandOptions::flag(const char *option, bool &value, const char *description) {
    m_app.add_flag(option, value, description);
}

void CommandOptions::exclusive(const char *option, const char *other) {
    m_app.get_option(option)->excludes(m_app.get_option(other));
}

} // namespace ludarium
