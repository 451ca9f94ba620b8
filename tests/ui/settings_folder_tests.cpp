// ttltool computes the user's settings folder without Qt; QORTool asks
// QStandardPaths. Both must name the same folder, or the two programs would
// keep different settings.
#include "settings_folder.h"

#include <QCoreApplication>
#include <QDir>
#include <QStandardPaths>
#include <gtest/gtest.h>
#include <string>

namespace qor {
namespace {

struct Environment
{
    const char *name;
    const char *home;
    const char *xdgConfigHome; // nullptr: unset
};

class SettingsFolderAgreement : public testing::TestWithParam<Environment>
{
protected:
    void SetUp() override
    {
        m_home = qgetenv("HOME");
        m_xdg = qgetenv("XDG_CONFIG_HOME");
        m_hadXdg = qEnvironmentVariableIsSet("XDG_CONFIG_HOME");
        m_name = QCoreApplication::applicationName();
        QCoreApplication::setApplicationName("QORTool");
    }
    void TearDown() override
    {
        qputenv("HOME", m_home);
        m_hadXdg ? (void)qputenv("XDG_CONFIG_HOME", m_xdg) : (void)qunsetenv("XDG_CONFIG_HOME");
        QCoreApplication::setApplicationName(m_name);
    }

private:
    QByteArray m_home;
    QByteArray m_xdg;
    bool m_hadXdg = false;
    QString m_name;
};

TEST_P(SettingsFolderAgreement, TtltoolNamesTheFolderQtGivesQORTool)
{
    const Environment &e = GetParam();
    qputenv("HOME", e.home);
    e.xdgConfigHome ? (void)qputenv("XDG_CONFIG_HOME", e.xdgConfigHome)
                    : (void)qunsetenv("XDG_CONFIG_HOME");

    const QString qt = QDir::toNativeSeparators(
        QStandardPaths::writableLocation(QStandardPaths::AppConfigLocation));

    EXPECT_EQ(UserSettingsFolder("QORTool"), qt.toStdString());
}

#if defined(__linux__)
INSTANTIATE_TEST_SUITE_P(Linux, SettingsFolderAgreement,
                         testing::Values(Environment{"Home", "/home/j\xC3\xBCrgen", nullptr},
                                         Environment{"EmptyXdg", "/home/u", ""},
                                         Environment{"Xdg", "/home/u", "/srv/config"},
                                         Environment{"RelativeXdg", "/home/u", "relative/config"}),
                         [](const testing::TestParamInfo<Environment> &info) {
                             return std::string(info.param.name);
                         });
#endif

} // namespace
} // namespace qor
