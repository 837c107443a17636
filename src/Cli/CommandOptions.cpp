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

} // namespace

void CommandOptions::argument(const char *name, QString &value, const char *description) {
    m_app
        .add_option_function<std::string>(
            name, [&value](const std::string &text) { value = decoded(text); }, description)
        ->required()
        ->check(notEmpty())
        ->type_name("");
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
