#include "settings_folder.h"

#include "atomic_file.h"
#include "common.h"
#include "native_file.h"

#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <system_error>

#ifdef _WIN32
#include <process.h>
#else
#include <unistd.h>
#endif

namespace qor {

namespace {

namespace fs = std::filesystem;

std::string EnvironmentValue(const char *name)
{
#ifdef _WIN32
    std::wstring wide(name, name + std::char_traits<char>::length(name));
    const wchar_t *value = _wgetenv(wide.c_str());
    return value ? Utf8Path(fs::path(value)) : std::string();
#else
    const char *value = std::getenv(name);
    return value ? std::string(value) : std::string();
#endif
}

std::string WithSeparator(std::string folder)
{
    folder = NativeSeparators(std::move(folder));
    if (folder.empty() || (folder.back() != '\\' && folder.back() != '/')) {
        folder += PathSeparator();
    }
    return folder;
}

int ProcessId()
{
#ifdef _WIN32
    return _getpid();
#else
    return static_cast<int>(getpid());
#endif
}

} // namespace

std::string UserSettingsFolder(std::string_view appName)
{
#if defined(_WIN32)
    const std::string base = EnvironmentValue("LOCALAPPDATA");
    return base.empty() ? std::string() : NativeSeparators(base + "\\" + std::string(appName));
#else
    std::string home = EnvironmentValue("HOME");
    if (home.empty()) {
        home.assign(1, '/'); // as Qt, which then gives "//.config"
    }
#if defined(__APPLE__)
    return home + "/Library/Preferences/" + std::string(appName);
#else
    std::string base = EnvironmentValue("XDG_CONFIG_HOME");
    if (base.empty()) {
        base = home + "/.config";
    }
    return base + "/" + std::string(appName);
#endif
#endif
}

bool FolderTakesNewFiles(const std::string &folder)
{
    const std::string probe =
        WithSeparator(folder) + ".qortool-probe." + std::to_string(ProcessId());
    std::FILE *file = CreateNewFile(probe);
    if (!file) {
        return false;
    }
    std::fclose(file);
    std::error_code ec;
    fs::remove(NativePath(probe), ec);
    return true;
}

std::string ChooseSettingsFolder(const std::string &appDir, const std::string &userFolder)
{
    const std::string app = WithSeparator(appDir);
    if (userFolder.empty() ||
        (!FileExists(app + PerUserSettingsMark) && FolderTakesNewFiles(app))) {
        return app;
    }
    const std::string user = WithSeparator(userFolder);
    std::error_code ec;
    fs::create_directories(NativePath(user), ec);
    if (!FolderTakesNewFiles(user)) {
        return app;
    }
    if (!FileExists(user + SettingsFileName) && FileExists(app + SettingsFileName)) {
        // A failed copy leaves no file: start-up then writes the defaults.
        (void)CopyToNewFile(app + SettingsFileName, user + SettingsFileName);
    }
    return user;
}

std::string SettingsFileToRead(const std::string &appDir, const std::string &userFolder)
{
    const std::string app = WithSeparator(appDir);
    if (!userFolder.empty() &&
        (FileExists(app + PerUserSettingsMark) || !FolderTakesNewFiles(app))) {
        const std::string user = WithSeparator(userFolder) + SettingsFileName;
        if (FileExists(user)) {
            return user;
        }
    }
    return app + SettingsFileName;
}

} // namespace qor
