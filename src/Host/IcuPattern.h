#pragma once

#include <QString>
#include <QStringList>
#include <memory>
#include <optional>

namespace ludarium {

/// A regular expression with ICU's syntax and meaning, compiled once. Copies share it, and it may be used from any
/// thread.
class IcuPattern {
  public:
    enum class Case { Sensitive, Insensitive };

    /// None for a text that is no regular expression.
    static std::optional<IcuPattern> compile(const QString &pattern, Case sensitivity = Case::Sensitive);
    /// For a pattern of our own, which is known to compile.
    explicit IcuPattern(const QString &pattern, Case sensitivity = Case::Sensitive);

    struct Match {
        qsizetype start = 0;
        qsizetype length = 0;
        QStringList groups; ///< the whole match, then each group; null for one that took no part
    };
    /// The first match. A search that would take too long or too much memory finds nothing, so that a pattern from
    /// outside cannot hold the program up.
    std::optional<Match> find(const QString &text) const;
    bool matches(const QString &text) const { return find(text).has_value(); }
    /// `text` with every match replaced by the plain text `replacement`.
    QString replaceAll(const QString &text, const QString &replacement) const;

  private:
    struct Compiled;
    explicit IcuPattern(std::shared_ptr<const Compiled> compiled) : m_compiled(std::move(compiled)) {}
    std::shared_ptr<const Compiled> m_compiled;
};

} // namespace ludarium
