#include "Services/Library/GamesFileReader.h"

#include "Host/AppLogger.h"
#include "Services/Library/CollectionFile.h"
#include "Services/Library/GameRecovery.h"

#include <QElapsedTimer>
#include <QFileInfo>
#include <QThread>
#include <QThreadPool>
#include <algorithm>
#include <deque>
#include <future>
#include <mutex>
#include <optional>

namespace ludarium {

namespace {

struct PartOutcome {
    GamesFileContent content;
    bool wellFormed = false;
    double seconds = 0;
};

PartOutcome readPart(const CollectionFile &file, XmlPart part, TextPool &pool) {
    QElapsedTimer timer;
    timer.start();
    GamesSink sink(pool);
    XmlPartSource source(file, std::move(part));
    PartOutcome outcome;
    outcome.wellFormed = readXmlRecords(source, sink).wellFormed;
    outcome.content = sink.takeContent();
    outcome.seconds = double(timer.nsecsElapsed()) / 1e9;
    return outcome;
}

} // namespace

struct GamesFileReader::Part {
    /// The file of a part; a whole file is opened only when its turn comes, so that a thousand small files do not
    /// take a thousand descriptors.
    std::shared_ptr<CollectionFile> file;
    std::optional<XmlPart> range;
    QString path;
    qint64 size = 0;
    std::promise<PartOutcome> promise;
};

struct GamesFileReader::File {
    QString path;
    std::vector<std::future<PartOutcome>> parts;
};

struct GamesFileReader::State {
    TextPool texts;
    std::mutex poolsMutex;
    std::vector<std::unique_ptr<TextPool>> idlePools; ///< one is made for each thread that works at the same time
    std::deque<File> files;

    std::unique_ptr<TextPool> takePool() {
        const std::scoped_lock lock(poolsMutex);
        if (idlePools.empty())
            return std::make_unique<TextPool>(&texts);
        auto pool = std::move(idlePools.back());
        idlePools.pop_back();
        return pool;
    }
    void putBack(std::unique_ptr<TextPool> texts) {
        const std::scoped_lock lock(poolsMutex);
        idlePools.push_back(std::move(texts));
    }
    QThreadPool pool; ///< last, so that its threads end before what they use
};

GamesFileReader::GamesFileReader(const QStringList &paths, qint64 partSize) : m_state(std::make_unique<State>()) {
    std::vector<std::shared_ptr<Part>> parts;
    for (const QString &path : paths) {
        File &file = m_state->files.emplace_back(File{path, {}});
        const auto add = [&](std::shared_ptr<CollectionFile> open, std::optional<XmlPart> range, qint64 size) {
            auto part = std::make_shared<Part>(Part{std::move(open), std::move(range), path, size, {}});
            file.parts.push_back(part->promise.get_future());
            parts.push_back(std::move(part));
        };

        const qint64 size = QFileInfo(path).size();
        if (size < 2 * partSize) {
            add({}, {}, size);
            continue;
        }
        try {
            const auto open = std::make_shared<CollectionFile>(path);
            for (XmlPart &range : xmlParts(*open, partSize))
                add(open, range, range.end - range.begin);
        } catch (...) {
            std::promise<PartOutcome> failed;
            failed.set_exception(std::current_exception());
            file.parts.clear();
            file.parts.push_back(failed.get_future());
        }
    }

    std::ranges::stable_sort(parts, std::ranges::greater(), [](const auto &part) { return part->size; });
    m_state->pool.setMaxThreadCount(std::max(1, QThread::idealThreadCount()));
    for (const auto &part : parts)
        m_state->pool.start([part, state = m_state.get()] {
            try {
                if (!part->file)
                    part->file = std::make_shared<CollectionFile>(part->path);
                XmlPart range = part->range.value_or(XmlPart{0, part->file->size(), {}, {}});
                auto texts = state->takePool();
                PartOutcome outcome = readPart(*part->file, std::move(range), *texts);
                state->putBack(std::move(texts));
                part->promise.set_value(std::move(outcome));
            } catch (...) {
                part->promise.set_exception(std::current_exception());
            }
            part->file.reset();
        });
}

GamesFileReader::~GamesFileReader() {
    m_state->pool.clear();
}

GamesFileContent GamesFileReader::next() {
    File file = std::move(m_state->files.front());
    m_state->files.pop_front();

    PartOutcome whole = file.parts.front().get();
    for (size_t i = 1; i < file.parts.size(); ++i) {
        PartOutcome part = file.parts[i].get();
        whole.wellFormed = whole.wellFormed && part.wellFormed;
        whole.seconds += part.seconds;
        if (whole.wellFormed)
            whole.content.append(std::move(part.content));
    }
    const CollectionFile bytes(file.path);
    auto texts = m_state->takePool();
    if (!whole.wellFormed && file.parts.size() > 1)
        whole = readPart(bytes, {0, bytes.size(), {}, {}}, *texts);
    Log::debug(QStringLiteral("    ⏱️ Read and decoded %1 MB in %2s")
                   .arg(bytes.size() / 1'048'576)
                   .arg(whole.seconds, 0, 'f', 2));

    if (!whole.wellFormed) {
        Log::warning(QStringLiteral("    ⚠️ Standard decode failed, trying manual parsing..."));
        QElapsedTimer timer;
        timer.start();
        whole.content = {};
        XmlPartSource source(bytes, {0, bytes.size(), {}, {}});
        whole.content.games = recoverGames(source, *texts);
        Log::debug(QStringLiteral("    ⏱️ Manual parse in %1s").arg(double(timer.nsecsElapsed()) / 1e9, 0, 'f', 2));
    }
    m_state->putBack(std::move(texts));
    whole.content.settle();
    return std::move(whole.content);
}

} // namespace ludarium
