#include "platform/qt/PosixFiles.h"

#include <cerrno>

#include <fcntl.h>
#include <sys/file.h>
#include <unistd.h>

namespace larkspool {

namespace {

class PosixFileLock : public FileLock {
  public:
    explicit PosixFileLock(int openFile) : file(openFile) {}
    ~PosixFileLock() override {
        if (file >= 0) {
            close(file);
        }
    }
    PosixFileLock(const PosixFileLock&) = delete;
    PosixFileLock& operator=(const PosixFileLock&) = delete;

  private:
    int file; // -1: the file could not be opened
};

// For writing if possible, because some network file systems lock only such files.
int OpenForLocking(const FolderItem& item) {
    for (const int mode : {O_RDWR, O_RDONLY}) {
        const int file = open(item.Path().c_str(), mode | O_CLOEXEC | O_NONBLOCK);
        if (file >= 0) {
            return file;
        }
    }
    return -1;
}

} // namespace

// Each call opens the file again, so two locks exclude each other within one program too.
std::unique_ptr<FileLock> LockFile(const FolderItem& item) {
    const int file = OpenForLocking(item);
    if (file >= 0 && flock(file, LOCK_EX | LOCK_NB) != 0 && errno == EWOULDBLOCK) {
        close(file);
        return nullptr;
    }
    return std::make_unique<PosixFileLock>(file);
}

bool SettleFile(const FolderItem& item) {
    const int file = open(item.Path().c_str(), O_RDONLY | O_CLOEXEC | O_NONBLOCK);
    if (file < 0) {
        return false;
    }
    // Some file systems do not support fsync.
    const bool settled = fsync(file) == 0 || errno == EINVAL || errno == ENOSYS;
    close(file);
    return settled;
}

} // namespace larkspool
