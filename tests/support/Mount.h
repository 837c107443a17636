#pragma once

#include <QString>

namespace ludarium::test {

/// A volume for one test, taken away with this object. Needs root: `ok()` is false without, and the test should skip.
class Mount {
  public:
    /// A file system in memory of `size` ("1m") at `folder`.
    static Mount memory(const QString &folder, const QString &size);
    /// `source` again at `folder`, on the same device.
    static Mount bind(const QString &source, const QString &folder);
    ~Mount();
    Mount(const Mount &) = delete;
    Mount &operator=(const Mount &) = delete;

    bool ok() const { return m_ok; }
    QString reason() const { return m_reason; }

  private:
    Mount(const QString &source, const QString &folder, const char *type, unsigned long flags,
          const QByteArray &options);

    QByteArray m_folder;
    QString m_reason;
    bool m_ok = false;
};

} // namespace ludarium::test
