#include "support/AsNobody.h"

#include <QDirIterator>
#include <QFile>
#include <gtest/gtest.h>
#include <unistd.h>

namespace ludarium::test {

namespace {

constexpr uid_t nobody = 65534;

void give(const QString &path) {
    EXPECT_EQ(::lchown(QFile::encodeName(path).constData(), nobody, nobody), 0) << path.toStdString();
}

} // namespace

AsNobody::AsNobody(const QString &folder) : m_wasRoot(::geteuid() == 0) {
    if (!m_wasRoot)
        return;
    give(folder);
    QDirIterator entries(folder, QDir::AllEntries | QDir::Hidden | QDir::System | QDir::NoDotAndDotDot,
                         QDirIterator::Subdirectories);
    while (entries.hasNext())
        give(entries.next());
    // The real id too, which is what questions about access go by; the saved one leads back.
    EXPECT_EQ(::setresgid(nobody, nobody, 0), 0);
    EXPECT_EQ(::setresuid(nobody, nobody, 0), 0);
}

AsNobody::~AsNobody() {
    if (!m_wasRoot)
        return;
    EXPECT_EQ(::setresuid(0, 0, 0), 0);
    EXPECT_EQ(::setresgid(0, 0, 0), 0);
}

} // namespace ludarium::test
