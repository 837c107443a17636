#include "Host/HttpRules.h"

#include <gtest/gtest.h>

using namespace ludarium;

TEST(HttpRules, AllowHttpsAnywhereAndPlainHttpOnLoopbackOnly) {
    for (const auto &[url, allowed] : {std::pair{"https://example.com/x", true},
                                       {"http://localhost:80/", true},
                                       {"http://127.0.0.1/", true},
                                       {"http://127.8.9.1/", true},
                                       {"http://[::1]:8080/", true},
                                       {"http://example.com/", false},
                                       {"http://localhost.example.com/", false},
                                       {"http://127.0.0.1@example.com/", false},
                                       {"http://0.0.0.0/", false},
                                       {"http://192.168.0.1/", false},
                                       {"file:///etc/passwd", false},
                                       {"https:///x", false},
                                       {"", false}})
        EXPECT_EQ(httpUrlProblem(QUrl(QString::fromLatin1(url))).isEmpty(), allowed) << url;
}

TEST(HttpRules, RefuseARedirectFromElsewhereToThisMachine) {
    const QUrl elsewhere(QStringLiteral("https://example.com/"));
    const QUrl here(QStringLiteral("http://127.0.0.1:631/"));
    EXPECT_FALSE(httpRedirectProblem(elsewhere, here).isEmpty());
    EXPECT_FALSE(httpRedirectProblem(elsewhere, QUrl(QStringLiteral("https://localhost/"))).isEmpty());
    EXPECT_TRUE(httpRedirectProblem(here, here).isEmpty());
    EXPECT_TRUE(httpRedirectProblem(here, elsewhere).isEmpty());
}

TEST(HttpRules, ShowAnAddressWithoutItsSecrets) {
    EXPECT_EQ(httpOrigin(QUrl(QStringLiteral("https://user:pw@example.com:8443/a?key=b#c"))),
              QStringLiteral("https://example.com:8443"));
}
