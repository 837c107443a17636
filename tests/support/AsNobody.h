#pragma once

#include <QString>

namespace ludarium::test {

/// Where a test runs as root, everything in its life runs as a user who may not write everywhere, and who owns `folder`
/// with all that is in it. Where it does not, nothing changes.
class AsNobody {
  public:
    explicit AsNobody(const QString &folder);
    ~AsNobody();
    AsNobody(const AsNobody &) = delete;
    AsNobody &operator=(const AsNobody &) = delete;

  private:
    bool m_wasRoot;
};

} // namespace ludarium::test
