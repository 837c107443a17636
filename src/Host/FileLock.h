#pragma once

#include <QString>

namespace ludarium {

/// A lock that processes of the user take one after another, for moments; it ends with its process. A file that cannot
/// be opened locks nobody out.
class FileLock {
  public:
    explicit FileLock(const QString &file);
    ~FileLock();
    Q_DISABLE_COPY_MOVE(FileLock)

  private:
    int m_descriptor;
};

} // namespace ludarium
