#include "FaultyVfs.h"

#include <algorithm>
#include <cstring>
#include <sqlite3.h>
#include <utility>

namespace {

/// One open file, in memory that SQLite provides.
struct Handle {
    sqlite3_file base;
    std::shared_ptr<FaultyVfs::File>* file;
    unsigned generation;
    int lock;
    unsigned shmShared;
    unsigned shmExclusive;
    bool usesShm;
};

FaultyVfs& vfs()
{
    static FaultyVfs instance;
    return instance;
}

Handle& handleOf(sqlite3_file* file) { return *reinterpret_cast<Handle*>(file); }
FaultyVfs::File& fileOf(sqlite3_file* file) { return **handleOf(file).file; }
bool isDead(sqlite3_file* file)
{
    return vfs().isPowerCut() || handleOf(file).generation != vfs().generation();
}

void apply(std::string& content, const FaultyVfs::Write& write, std::size_t length)
{
    if (write.isTruncation) {
        content.resize(write.offset);
        return;
    }
    if (content.size() < write.offset + length)
        content.resize(write.offset + length);
    std::memcpy(content.data() + write.offset, write.bytes.data(), length);
}

int unlock(sqlite3_file* file, int level)
{
    Handle& handle = handleOf(file);
    FaultyVfs::File& target = fileOf(file);
    if (target.exclusive == &handle)
        target.exclusive = nullptr;
    if (target.reserved == &handle)
        target.reserved = nullptr;
    if (level == SQLITE_LOCK_NONE && handle.lock != SQLITE_LOCK_NONE)
        --target.sharedLocks;
    handle.lock = level;
    return SQLITE_OK;
}

int shmUnmap(sqlite3_file* file, int isDelete);

int closeFile(sqlite3_file* file)
{
    if (handleOf(file).lock != SQLITE_LOCK_NONE)
        unlock(file, SQLITE_LOCK_NONE);
    shmUnmap(file, 0);
    delete handleOf(file).file;
    return SQLITE_OK;
}

int readFile(sqlite3_file* file, void* buffer, int size, sqlite3_int64 offset)
{
    if (isDead(file))
        return SQLITE_IOERR_READ;
    const std::string& content = fileOf(file).content;
    const auto wanted = static_cast<std::size_t>(size);
    const auto first = std::min(static_cast<std::size_t>(offset), content.size());
    const std::size_t count = std::min(wanted, content.size() - first);
    std::memcpy(buffer, content.data() + first, count);
    std::memset(static_cast<char*>(buffer) + count, 0, wanted - count);
    return count == wanted ? SQLITE_OK : SQLITE_IOERR_SHORT_READ;
}

int write(sqlite3_file* file, FaultyVfs::Write change)
{
    if (isDead(file))
        return SQLITE_IOERR_WRITE;
    FaultyVfs::File& target = fileOf(file);
    const int refusal = vfs().beforeWrite();
    if (refusal != SQLITE_OK) // what is refused may still have reached the disk in part
        return refusal;
    apply(target.content, change, change.bytes.size());
    target.unsynced.push_back(std::move(change));
    return SQLITE_OK;
}

int writeFile(sqlite3_file* file, const void* bytes, int size, sqlite3_int64 offset)
{
    return write(file,
        { static_cast<std::size_t>(offset),
            std::string(static_cast<const char*>(bytes), static_cast<std::size_t>(size)), false });
}

int truncateFile(sqlite3_file* file, sqlite3_int64 size)
{
    return write(file, { static_cast<std::size_t>(size), {}, true });
}

int syncFile(sqlite3_file* file, int)
{
    if (isDead(file))
        return SQLITE_IOERR_FSYNC;
    const int refusal = vfs().beforeWrite();
    if (refusal != SQLITE_OK)
        return refusal;
    FaultyVfs::File& target = fileOf(file);
    target.durable = target.content;
    target.unsynced.clear();
    return SQLITE_OK;
}

int fileSize(sqlite3_file* file, sqlite3_int64* size)
{
    *size = static_cast<sqlite3_int64>(fileOf(file).content.size());
    return isDead(file) ? SQLITE_IOERR_FSTAT : SQLITE_OK;
}

int lock(sqlite3_file* file, int level)
{
    Handle& handle = handleOf(file);
    FaultyVfs::File& target = fileOf(file);
    if (isDead(file))
        return SQLITE_IOERR_LOCK;
    if (handle.lock >= level)
        return SQLITE_OK;
    const bool isOthers = target.exclusive != nullptr && target.exclusive != &handle;
    if (isOthers
        || (level >= SQLITE_LOCK_RESERVED && target.reserved != nullptr
            && target.reserved != &handle))
        return SQLITE_BUSY;
    if (level == SQLITE_LOCK_EXCLUSIVE && target.sharedLocks > 1)
        return SQLITE_BUSY;
    if (handle.lock == SQLITE_LOCK_NONE)
        ++target.sharedLocks;
    if (level >= SQLITE_LOCK_RESERVED)
        target.reserved = &handle;
    if (level == SQLITE_LOCK_EXCLUSIVE)
        target.exclusive = &handle;
    handle.lock = level;
    return SQLITE_OK;
}

int checkReservedLock(sqlite3_file* file, int* result)
{
    *result = fileOf(file).reserved != nullptr ? 1 : 0;
    return SQLITE_OK;
}

int fileControl(sqlite3_file*, int, void*) { return SQLITE_NOTFOUND; }
int sectorSize(sqlite3_file*) { return 512; }
int deviceCharacteristics(sqlite3_file*) { return SQLITE_IOCAP_POWERSAFE_OVERWRITE; }

int shmMap(sqlite3_file* file, int region, int size, int extend, void volatile** result)
{
    if (isDead(file))
        return SQLITE_IOERR_SHMMAP;
    FaultyVfs::File& target = fileOf(file);
    if (!std::exchange(handleOf(file).usesShm, true))
        ++target.shmUsers;
    *result = nullptr;
    while (target.shm.size() <= static_cast<std::size_t>(region)) {
        if (extend == 0)
            return SQLITE_OK;
        target.shm.push_back(std::make_unique<char[]>(static_cast<std::size_t>(size)));
    }
    *result = target.shm[static_cast<std::size_t>(region)].get();
    return SQLITE_OK;
}

void releaseShm(Handle& handle, FaultyVfs::File& target, int index)
{
    const unsigned bit = 1U << index;
    if ((handle.shmShared & bit) != 0)
        --target.shmLocks[index].shared;
    if ((handle.shmExclusive & bit) != 0)
        target.shmLocks[index].isExclusive = false;
    handle.shmShared &= ~bit;
    handle.shmExclusive &= ~bit;
}

bool canLockShm(const Handle& handle, const FaultyVfs::File& target, int index, bool isExclusive)
{
    const bool isOwn = (handle.shmShared >> index & 1) != 0;
    const FaultyVfs::ShmLock& present = target.shmLocks[index];
    return !present.isExclusive && (!isExclusive || present.shared == (isOwn ? 1 : 0));
}

int shmLock(sqlite3_file* file, int offset, int count, int flags)
{
    Handle& handle = handleOf(file);
    FaultyVfs::File& target = fileOf(file);
    if ((flags & SQLITE_SHM_UNLOCK) != 0) {
        for (int i = offset; i < offset + count; ++i)
            releaseShm(handle, target, i);
        return SQLITE_OK;
    }
    if (isDead(file))
        return SQLITE_IOERR_SHMLOCK;
    const bool isExclusive = (flags & SQLITE_SHM_EXCLUSIVE) != 0;
    for (int i = offset; i < offset + count; ++i) {
        if (!canLockShm(handle, target, i, isExclusive))
            return SQLITE_BUSY;
    }
    for (int i = offset; i < offset + count; ++i) {
        releaseShm(handle, target, i);
        (isExclusive ? handle.shmExclusive : handle.shmShared) |= 1U << i;
        if (isExclusive)
            target.shmLocks[i].isExclusive = true;
        else
            ++target.shmLocks[i].shared;
    }
    return SQLITE_OK;
}

void shmBarrier(sqlite3_file*) { }

int shmUnmap(sqlite3_file* file, int)
{
    Handle& handle = handleOf(file);
    if (!std::exchange(handle.usesShm, false))
        return SQLITE_OK;
    FaultyVfs::File& target = fileOf(file);
    for (int i = 0; i < 8; ++i)
        releaseShm(handle, target, i);
    if (--target.shmUsers == 0)
        target.shm.clear();
    return SQLITE_OK;
}

const sqlite3_io_methods methods { 2, closeFile, readFile, writeFile, truncateFile, syncFile,
    fileSize, lock, unlock, checkReservedLock, fileControl, sectorSize, deviceCharacteristics,
    shmMap, shmLock, shmBarrier, shmUnmap, nullptr, nullptr };

int openFile(sqlite3_vfs*, const char* name, sqlite3_file* file, int flags, int* outFlags)
{
    file->pMethods = nullptr;
    if (vfs().isPowerCut())
        return SQLITE_CANTOPEN;
    const bool create = (flags & SQLITE_OPEN_CREATE) != 0;
    auto target = name == nullptr ? std::make_shared<FaultyVfs::File>() : vfs().find(name, create);
    if (!target)
        return SQLITE_CANTOPEN;
    Handle& handle = handleOf(file);
    handle = { { &methods }, new std::shared_ptr<FaultyVfs::File>(std::move(target)),
        vfs().generation(), SQLITE_LOCK_NONE, 0, 0, false };
    if (outFlags != nullptr)
        *outFlags = flags;
    return SQLITE_OK;
}

int removeFile(sqlite3_vfs*, const char* name, int)
{
    if (vfs().isPowerCut())
        return SQLITE_IOERR_DELETE;
    vfs().remove(name);
    return SQLITE_OK;
}

int access(sqlite3_vfs*, const char* name, int, int* result)
{
    *result = vfs().find(name, false) != nullptr ? 1 : 0;
    return SQLITE_OK;
}

int fullPath(sqlite3_vfs*, const char* name, int size, char* out)
{
    sqlite3_snprintf(size, out, "%s", name);
    return SQLITE_OK;
}

int sleepNot(sqlite3_vfs*, int microseconds) { return microseconds; }

} // namespace

FaultyVfs& FaultyVfs::install()
{
    static sqlite3_vfs registered = [] {
        sqlite3_vfs definition = *sqlite3_vfs_find(nullptr); // time and randomness are the usual
        definition.iVersion = 1;
        definition.szOsFile = sizeof(Handle);
        definition.pNext = nullptr;
        definition.zName = "faulty";
        definition.xOpen = openFile;
        definition.xDelete = removeFile;
        definition.xAccess = access;
        definition.xFullPathname = fullPath;
        definition.xSleep = sleepNot;
        return definition;
    }();
    sqlite3_vfs_register(&registered, 1);
    return vfs();
}

std::shared_ptr<FaultyVfs::File> FaultyVfs::find(const std::string& name, bool create)
{
    const auto found = m_files.find(name);
    if (found != m_files.end())
        return found->second;
    return create ? m_files[name] = std::make_shared<File>() : nullptr;
}

void FaultyVfs::refuseWritesFrom(int count, int code)
{
    m_refusedFrom = m_writes + count;
    m_refusalCode = code;
    m_hasRefused = false;
}

void FaultyVfs::cutPowerAt(int count, unsigned seed)
{
    m_cutAt = m_writes + count;
    m_random.seed(seed);
}

int FaultyVfs::beforeWrite()
{
    ++m_writes;
    if (m_cutAt != 0 && m_writes >= m_cutAt) {
        cutPower();
        return SQLITE_IOERR;
    }
    if (m_refusedFrom != 0 && m_writes >= m_refusedFrom) {
        m_hasRefused = true;
        return m_refusalCode;
    }
    return SQLITE_OK;
}

void FaultyVfs::cutPower()
{
    m_isPowerCut = true;
    for (auto& [name, file] : m_files) {
        for (const Write& write : file->unsynced) {
            const auto fate = m_random() % 3;
            if (fate == 0) // lost
                continue;
            const std::size_t length = write.bytes.size();
            apply(file->durable, write, fate == 1 ? length : m_random() % (length + 1));
        }
    }
}

void FaultyVfs::restorePower()
{
    m_cutAt = 0;
    m_isPowerCut = false;
    ++m_generation;
    std::map<std::string, std::shared_ptr<File>> survivors;
    for (const auto& [name, file] : m_files) {
        auto survivor = std::make_shared<File>();
        survivor->content = survivor->durable = file->durable;
        survivors[name] = survivor;
    }
    m_files = std::move(survivors);
}
