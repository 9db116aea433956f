#include "stores/sqlite/files.h"

#include <cerrno>
#include <cstdio>
#include <cstring>
#include <filesystem>
#include <sys/stat.h>
#include <system_error>
#include <unistd.h>

#include "foundation/vreportmessageparams.h"
#include "platform/lasterror.h"
#include "platform/paths.h"
#include "platform/userfiles.h"

namespace connectdialog::stores {

namespace {

bool FailFromErrno(const std::string& path, VReportMessageParams& report) {
    const int cause = errno;
    report.Fail(platform::ErrorFromErrno(cause));
    report.AddInsert(path.c_str());
    report.AddInsert(std::generic_category().message(cause).c_str());
    return false;
}

}  // namespace

FileKind LookAtFile(const std::string& path, VReportMessageParams& report) {
    struct stat status {};
    if (::stat(path.c_str(), &status) == 0) {
        return S_ISREG(status.st_mode)   ? FileKind::kFile
               : S_ISDIR(status.st_mode) ? FileKind::kFolder
                                         : FileKind::kOther;
    }
    if (errno == ENOENT) return FileKind::kAbsent;
    FailFromErrno(path, report);
    return FileKind::kUnknown;
}

FileStamp ReadFileStamp(const std::string& path) {
    struct stat status {};
    if (::stat(path.c_str(), &status) != 0) return {};
    return {status.st_dev, status.st_ino, status.st_size,
            std::int64_t{status.st_mtim.tv_sec} * 1'000'000'000 + status.st_mtim.tv_nsec};
}

bool CreatePrivateFile(const std::string& path, VReportMessageParams& report) {
    return ::mknod(path.c_str(), S_IFREG | S_IRUSR | S_IWUSR, 0) == 0 || errno == EEXIST || FailFromErrno(path, report);
}

bool CreatePrivateFolder(const std::string& path, VReportMessageParams& report) {
    if (path.empty() || platform::CreateUserFolder(platform::FromNativePath(path))) return true;
    report.Fail(platform::GetLastErrorCode());
    report.AddInsert(path.c_str());
    return false;
}

std::string GetFolderOf(const std::string& path) {
    return std::filesystem::path(path).parent_path().string();
}

bool CanCreateFile(const std::string& path) {
    std::string folder = GetFolderOf(path);
    while (!folder.empty() && ::access(folder.c_str(), F_OK) != 0) folder = GetFolderOf(folder);
    return ::access(folder.empty() ? "." : folder.c_str(), W_OK) == 0;
}

bool LinkFile(const std::string& from, const std::string& to, VReportMessageParams& report) {
    return ::link(from.c_str(), to.c_str()) == 0 || FailFromErrno(to, report);
}

bool RenameFile(const std::string& from, const std::string& to, VReportMessageParams& report) {
    return std::rename(from.c_str(), to.c_str()) == 0 || FailFromErrno(to, report);
}

void RemoveFile(const std::string& path) {
    ::unlink(path.c_str());
}

std::vector<std::string> ListFolder(const std::string& path) {
    std::vector<std::string> names;
    std::error_code error;
    std::filesystem::directory_iterator entries(path, error);
    for (; !error && entries != std::filesystem::directory_iterator(); entries.increment(error)) {
        names.push_back(entries->path().filename().string());
    }
    return names;
}

std::string GetProcessSuffix() {
    return std::to_string(::getpid());
}

}  // namespace connectdialog::stores
