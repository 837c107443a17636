#pragma once

#include "Models/TextPool.h"
#include "Services/Library/GamesSink.h"

#include <QStringList>
#include <functional>
#include <memory>

namespace ludarium {

/// Reads games files on as many threads as the processor has, the biggest pieces first, while the results are taken in
/// the order of the files. Big files are read in several parts at once.
class GamesFileReader {
  public:
    /// Starts reading. `partSize` is about how many bytes one thread takes at a time.
    explicit GamesFileReader(const QStringList &paths, qint64 partSize = defaultPartSize);
    /// Drops what has not begun and waits for the rest.
    ~GamesFileReader();

    /// The content of the next file, well-formed or recovered; call it once for each path. Throws what kept the file
    /// from being read.
    GamesFileContent next();

    static constexpr qint64 defaultPartSize = 4 * 1024 * 1024;

  private:
    struct Part;
    struct File;
    struct State;
    std::unique_ptr<State> m_state;
};

} // namespace ludarium
