// SPDX-License-Identifier: GPL-3.0-or-later
#include "app/Paths.h"

#include <gtest/gtest.h>

#include <QDir>

#include <array>

namespace velarin::test {

// Sets the base folders of the environment, and puts them back afterwards.
class PathsTest : public testing::Test
{
protected:
    static constexpr std::array variables{ "XDG_DATA_HOME", "XDG_CACHE_HOME", "XDG_CONFIG_HOME" };

    void SetUp() override
    {
        for (const char* variable : variables)
            m_former.append({ qEnvironmentVariableIsSet(variable), qgetenv(variable) });
    }

    void TearDown() override
    {
        for (std::size_t at = 0; at < variables.size(); ++at) {
            const auto& [isSet, value] = m_former[static_cast<qsizetype>(at)];
            if (isSet)
                qputenv(variables[at], value);
            else
                qunsetenv(variables[at]);
        }
    }

private:
    QList<std::pair<bool, QByteArray>> m_former;
};

TEST_F(PathsTest, theFoldersAreThoseOfTheEnvironment)
{
    qputenv("XDG_DATA_HOME", "/somewhere/data");
    qputenv("XDG_CACHE_HOME", "/somewhere/cache");
    qputenv("XDG_CONFIG_HOME", "/somewhere/config");

    EXPECT_EQ(userFolders(), (BaseFolders{ QStringLiteral("/somewhere/data"), QStringLiteral("/somewhere/cache"),
                                 QStringLiteral("/somewhere/config") }));
}

TEST_F(PathsTest, withoutTheEnvironmentTheyLieInTheHomeFolder)
{
    for (const char* variable : variables)
        qunsetenv(variable);

    const QString home = QDir::homePath();
    EXPECT_EQ(userFolders(), (BaseFolders{ home + QStringLiteral("/.local/share"), home + QStringLiteral("/.cache"),
                                 home + QStringLiteral("/.config") }));
}

}
