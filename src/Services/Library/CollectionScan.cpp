#include "Services/Library/CollectionScan.h"

#include "Services/Collections/CollectionLayout.h"

#include <QFile>
#include <algorithm>
#include <dirent.h>
#include <fcntl.h>
#include <memory>
#include <sys/stat.h>

namespace ludarium {

using namespace Qt::StringLiterals;

namespace {

constexpr std::string_view articles[]{"The", "A", "An"};

/// Calls `use` with each other spelling of a name.
template<typename Use>
void forArticleVariants(std::string_view name, Use use) {
    for (const std::string_view article : articles) {
        if (name.size() >= article.size() + 2 && name.ends_with(article) &&
            name.substr(name.size() - article.size() - 2, 2) == ", ") {
            use(std::string(article) + ' ' + std::string(name.substr(0, name.size() - article.size() - 2)));
            break;
        }
    }
    for (const std::string_view article : articles) {
        if (name.size() > article.size() && name.starts_with(article) && name[article.size()] == ' ') {
            use(std::string(name.substr(article.size() + 1)) + ", " + std::string(article));
            break;
        }
    }
}

/// Without " (1995)" at the end.
std::string_view withoutYear(std::string_view name) {
    if (name.size() < 7)
        return name;
    const std::string_view end = name.substr(name.size() - 7);
    const bool isYear = end.starts_with(" (") && end.back() == ')' &&
                        std::all_of(end.begin() + 2, end.end() - 1, [](char c) { return c >= '0' && c <= '9'; });
    return isYear ? name.substr(0, name.size() - 7) : name;
}

class Directory {
  public:
    explicit Directory(const QByteArray &path) : m_stream(::opendir(path.constData())) {}
    ~Directory() {
        if (m_stream != nullptr)
            ::closedir(m_stream);
    }
    Directory(const Directory &) = delete;
    Directory &operator=(const Directory &) = delete;

    const dirent *next() { return m_stream == nullptr ? nullptr : ::readdir(m_stream); }

    /// The listing says it itself but for links and on a few file systems.
    bool isDirectory(const dirent *entry) const {
        if (entry->d_type != DT_UNKNOWN && entry->d_type != DT_LNK)
            return entry->d_type == DT_DIR;
        struct stat information {};
        return ::fstatat(::dirfd(m_stream), entry->d_name, &information, 0) == 0 && S_ISDIR(information.st_mode);
    }

    bool isPlaceholder(const dirent *entry) const {
        struct stat information {};
        if (::fstatat(::dirfd(m_stream), entry->d_name, &information, 0) != 0)
            return true;
        return S_ISREG(information.st_mode) && information.st_size <= CollectionLayout::maxPlaceholderSize;
    }

  private:
    DIR *m_stream;
};

struct Scanner {
    bool isLiteCollection;
    std::string key;

    void add(NameTable &table, std::string_view name, NameTable::Kind kind) {
        assignNameKey(key, name);
        table.add(key, kind);
    }

    void addArchive(NameTable &table, std::string_view name) {
        add(table, name, NameTable::archive);
        const std::string_view loose = withoutYear(name);
        // A year is the same in the key.
        table.add(std::string_view(key).substr(0, key.size() - (name.size() - loose.size())), NameTable::archiveTitle);
        forArticleVariants(loose, [&](const std::string &variant) { add(table, variant, NameTable::archiveTitle); });
    }

    void scanDirectory(const QByteArray &path, NameTable &table, bool withInstalled) {
        Directory directory(path);
        while (const dirent *entry = directory.next()) {
            const std::string_view name(entry->d_name);
            if (name.starts_with('!') || name == "." || name == "..")
                continue;
            const size_t extension = name.ends_with(".zip") ? 4 : name.ends_with(".7z") ? 3 : 0;
            if (extension != 0) {
                if (!isLiteCollection || !directory.isPlaceholder(entry))
                    addArchive(table, name.substr(0, name.size() - extension));
            } else if (withInstalled && directory.isDirectory(entry)) {
                add(table, name, NameTable::installed);
            }
        }
    }

    void scanYears(const QByteArray &path, NameTable &table) {
        Directory years(path);
        while (const dirent *year = years.next()) {
            bool isNumber = false;
            const QByteArray yearName(year->d_name);
            yearName.toInt(&isNumber);
            if (yearName.size() != 4 || !isNumber)
                continue;
            Directory directory(path + '/' + yearName);
            while (const dirent *entry = directory.next()) {
                const std::string_view name(entry->d_name);
                if (name.starts_with('!') || name == "." || name == ".." || name.ends_with(".zip") ||
                    name.ends_with(".7z") || !directory.isDirectory(entry))
                    continue;
                add(table, name, NameTable::installed);
                add(table, yearName.toStdString() + '/' + entry->d_name, NameTable::installed);
            }
        }
    }
};

} // namespace

QStringList normalizeArticleVariants(const QString &name) {
    QStringList variants;
    forArticleVariants(name.toStdString(), [&](const std::string &text) { variants << QString::fromStdString(text); });
    return variants;
}

CollectionScan CollectionScan::scanCollectionDirectories(const QString &collection, bool isLiteCollection) {
    CollectionScan scan;
    Scanner scanner{isLiteCollection, {}};
    for (int i = 0; i < gameFamilyCount; ++i) {
        const auto family = static_cast<GameFamily>(i);
        const QByteArray path = QFile::encodeName(collection + u'/' + gameFamilyFolder(family));
        NameTable &table = scan.m_names[size_t(i)];
        if (family == GameFamily::windows9x)
            scanner.scanYears(path, table);
        else
            scanner.scanDirectory(path, table, true);
    }
    // Where older collections and downloads by hand leave archives of DOS games.
    for (const QLatin1StringView folder : {"eXoDOS"_L1, "DOWNLOAD"_L1})
        scanner.scanDirectory(QFile::encodeName(collection + u'/' + folder),
                              scan.m_names[static_cast<size_t>(GameFamily::dos)], false);
    return scan;
}

} // namespace ludarium
