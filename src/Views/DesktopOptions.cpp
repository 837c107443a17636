#include "Views/DesktopOptions.h"

#include <CLI/CLI.hpp>
#include <QDir>
#include <QFileInfo>
#include <sstream>

namespace ludarium {

namespace {

constexpr int wrongUsage = 2;
constexpr int largestSide = 16384;

std::optional<QSize> sizeFromText(const std::string &text) {
    const QStringList sides = QString::fromStdString(text).split(QLatin1Char('x'));
    if (sides.size() != 2)
        return std::nullopt;
    const QSize size(sides[0].toInt(), sides[1].toInt());
    if (size.isEmpty() || size.width() > largestSide || size.height() > largestSide)
        return std::nullopt;
    return size;
}

QString absolute(const std::string &path) {
    return path.empty() ? QString() : QDir::cleanPath(QFileInfo(QString::fromStdString(path)).absoluteFilePath());
}

} // namespace

DesktopOptions::Outcome DesktopOptions::parse(int argc, const char *const *argv) {
    std::string folder, home, screenshot, size, view, theme, select;
    CLI::App app("A library and launcher for collections of old games.", "ludarium");
    app.set_version_flag("--version", "ludarium " LUDARIUM_VERSION);
    app.add_option("FOLDER", folder, "The collection to open instead of the last one");
    app.add_option("--home", home, "Keep settings, caches and logs below this folder")->type_name("DIR");
    app.add_option("--screenshot", screenshot, "Draw the window into this file without a display, and leave")
        ->type_name("FILE");
    app.add_option("--size", size, "Size of the window, as 1280x800")
        ->type_name("WxH")
        ->check([](const std::string &text) {
            return sizeFromText(text) ? std::string() : "\"" + text + "\" is no size like 1280x800";
        });
    app.add_option("--view", view, "How games are shown")->check(CLI::IsMember({"grid", "list", "coverflow"}));
    app.add_option("--theme", theme, "Name of the theme for this run")
        ->check(CLI::IsMember(
            {"System", "System Dark", "System Light", "Retro Purple", "Ocean Blue", "Forest Green", "Midnight Glass"}));
    app.add_option("--select", select, "Select the game of this title")->type_name("TITLE");

    Outcome outcome;
    try {
        app.parse(argc, argv);
    } catch (const CLI::ParseError &error) {
        std::ostringstream out, problem;
        outcome.exitStatus = app.exit(error, out, problem) == 0 ? 0 : wrongUsage;
        outcome.output = QString::fromStdString(outcome.exitStatus == 0 ? out.str() : problem.str());
        return outcome;
    }
    DesktopOptions options;
    options.folder = absolute(folder);
    options.home = absolute(home);
    options.screenshot = absolute(screenshot);
    if (!size.empty())
        options.size = sizeFromText(size);
    if (!view.empty())
        options.view = view == "list"   ? QStringLiteral("List")
                       : view == "grid" ? QStringLiteral("Grid")
                                        : QStringLiteral("Coverflow");
    options.theme = QString::fromStdString(theme);
    options.select = QString::fromStdString(select);
    outcome.options = options;
    return outcome;
}

} // namespace ludarium
