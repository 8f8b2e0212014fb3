#include "FileTree.h"

#include "DeathTest.h"

#include <QFile>

#include <algorithm>
#include <array>
#include <cstddef>
#include <fcntl.h>
#include <filesystem>
#include <fstream>
#include <linux/capability.h>
#include <linux/filter.h>
#include <linux/seccomp.h>
#include <sched.h>
#include <sys/mount.h>
#include <sys/prctl.h>
#include <sys/stat.h>
#include <sys/syscall.h>
#include <unistd.h>

namespace fs = std::filesystem;

namespace {

constexpr uid_t nobody = 65534;

bool writeText(const char* path, const std::string& text)
{
    std::ofstream file(path);
    file << text << std::flush;
    return file.good();
}

/// A user may mount in a namespace of his own, in which he keeps his numbers.
bool makeOwnNamespace()
{
    const std::string user = std::to_string(::geteuid());
    const std::string group = std::to_string(::getegid());
    if (::geteuid() == 0)
        return ::unshare(CLONE_NEWNS) == 0;
    // Only a process of which core dumps may be made can write these files.
    ::prctl(PR_SET_DUMPABLE, 1);
    return ::unshare(CLONE_NEWUSER | CLONE_NEWNS) == 0
        && writeText("/proc/self/uid_map", user + ' ' + user + " 1")
        && writeText("/proc/self/setgroups", "deny")
        && writeText("/proc/self/gid_map", group + ' ' + group + " 1");
}

/// What is mounted from now on is seen by this process only.
bool enterOwnNamespace()
{
    return makeOwnNamespace() && ::mount("none", "/", nullptr, MS_REC | MS_PRIVATE, nullptr) == 0;
}

} // namespace

FileTree::FileTree() { ::chmod(path().constData(), 0755); }

QByteArray FileTree::path(const QByteArray& name) const
{
    const QByteArray folder = QFile::encodeName(m_folder.path());
    return name.isEmpty() ? folder : QByteArray(folder + '/' + name);
}

QUrl FileTree::url(const QByteArray& name) const { return fileUrl(path(name)); }

bool FileTree::addFile(const QByteArray& name, const QByteArray& content) const
{
    return writeText(path(name).constData(), content.toStdString());
}

bool FileTree::addFolder(const QByteArray& name) const
{
    return ::mkdir(path(name).constData(), 0755) == 0;
}

bool FileTree::addLink(const QByteArray& name, const QByteArray& target) const
{
    return ::symlink(target.constData(), path(name).constData()) == 0;
}

QByteArray FileTree::addDeepFolder(const QByteArray& within) const
{
    QByteArray name = within;
    while (path(name).size() < 3800) {
        name += (name.isEmpty() ? "" : "/") + QByteArray(100, 'x');
        if (!addFolder(name))
            return {};
    }
    return name;
}

bool FileTree::has(const QByteArray& name) const
{
    struct stat status { };
    return ::lstat(path(name).constData(), &status) == 0;
}

QByteArray FileTree::content(const QByteArray& name) const
{
    std::ifstream file(path(name).toStdString(), std::ios::binary);
    return QByteArray::fromStdString({ std::istreambuf_iterator<char>(file), {} });
}

QByteArrayList FileTree::names(const QByteArray& folder) const
{
    QByteArrayList names;
    std::error_code error;
    for (const auto& entry : fs::directory_iterator(path(folder).toStdString(), error))
        names.append(QByteArray::fromStdString(entry.path().filename().string()));
    std::sort(names.begin(), names.end());
    return names;
}

QUrl fileUrl(const QByteArray& path)
{
    return QUrl::fromEncoded("file://" + path.toPercentEncoding("/"));
}

QByteArrayList linesOfChild(const std::function<void()>& call)
{
    const Death end = deathOf([&call] {
        ::dup2(STDERR_FILENO, STDOUT_FILENO);
        call();
    });
    QByteArrayList lines = end.message.split('\n');
    const QByteArray rest = lines.takeLast(); // what follows the last line end
    if (!end.succeeded)
        lines.append("failed: " + rest);
    return lines;
}

void becomeNobody()
{
    if (::geteuid() == 0 && ::setresuid(nobody, nobody, nobody) != 0)
        _exit(1);
    // Who mounted a volume in a namespace of his own is an administrator there.
    __user_cap_header_struct header { _LINUX_CAPABILITY_VERSION_3, 0 };
    const std::array<__user_cap_data_struct, 2> none {};
    if (::syscall(SYS_capset, &header, none.data()) != 0)
        _exit(1);
}

bool mountVolume(const QByteArray& folder)
{
    return enterOwnNamespace()
        && ::mount("none", folder.constData(), "tmpfs", 0, "size=1m,mode=0755") == 0;
}

bool mountAgain(const QByteArray& folder, const QByteArray& place)
{
    return enterOwnNamespace()
        && ::mount(folder.constData(), place.constData(), nullptr, MS_BIND, nullptr) == 0;
}

void refuseSystemCall(long number, int error)
{
    constexpr auto numberAt = static_cast<unsigned int>(offsetof(seccomp_data, nr));
    const auto refused = static_cast<unsigned int>(number);
    const auto answer = SECCOMP_RET_ERRNO | static_cast<unsigned int>(error);
    std::array<sock_filter, 4> steps {
        sock_filter { BPF_LD | BPF_W | BPF_ABS, 0, 0, numberAt },
        sock_filter { BPF_JMP | BPF_JEQ | BPF_K, 0, 1, refused },
        sock_filter { BPF_RET | BPF_K, 0, 0, answer },
        sock_filter { BPF_RET | BPF_K, 0, 0, SECCOMP_RET_ALLOW },
    };
    const sock_fprog filter { steps.size(), steps.data() };
    if (::prctl(PR_SET_NO_NEW_PRIVS, 1, 0, 0, 0) != 0
        || ::prctl(PR_SET_SECCOMP, SECCOMP_MODE_FILTER, &filter) != 0)
        _exit(1);
}
