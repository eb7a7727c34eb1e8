#include "tests/faults/disk.h"

#include <sqlite3.h>
#include <unistd.h>
#include <csignal>
#include <new>
#include <stdexcept>
#include <string>

namespace faults::disk {

namespace {

std::int64_t writes = 0;
std::int64_t reads = 0;
/// The number of the write or read at which the fault begins.
std::int64_t faultAt = 0;
Fault fault = Fault::None;

/// A file of the layer, with the file system's own behind it.
struct File {
    sqlite3_file base;
    sqlite3_file* real;
};

sqlite3_file* Real(sqlite3_file* file) { return reinterpret_cast<File*>(file)->real; }
const sqlite3_io_methods* Methods(sqlite3_file* file) { return Real(file)->pMethods; }

/// What a write gives instead of being made; SQLITE_OK when it is to be made.
int RefusalOfWrite() {
    const bool now = ++writes > faultAt;
    if (!now) return SQLITE_OK;
    if (fault == Fault::Full) return SQLITE_FULL;
    return fault == Fault::Broken ? SQLITE_IOERR_WRITE : SQLITE_OK;
}

int Close(sqlite3_file* file) { return Methods(file)->xClose(Real(file)); }

int Read(sqlite3_file* file, void* into, int size, sqlite3_int64 at) {
    if (++reads > faultAt && fault == Fault::Unread) return SQLITE_IOERR_READ;
    return Methods(file)->xRead(Real(file), into, size, at);
}

int Write(sqlite3_file* file, const void* from, int size, sqlite3_int64 at) {
    if (const int refusal = RefusalOfWrite()) return refusal;
    if (fault == Fault::PowerCut && writes > faultAt) {
        Methods(file)->xWrite(Real(file), from, size / 2, at);
        kill(getpid(), SIGKILL);
    }
    return Methods(file)->xWrite(Real(file), from, size, at);
}

int Truncate(sqlite3_file* file, sqlite3_int64 size) {
    if (const int refusal = RefusalOfWrite()) return refusal;
    return Methods(file)->xTruncate(Real(file), size);
}

int Sync(sqlite3_file* file, int flags) {
    if (const int refusal = RefusalOfWrite()) return refusal == SQLITE_FULL ? SQLITE_IOERR_FSYNC : refusal;
    if (fault == Fault::PowerCut && writes > faultAt) kill(getpid(), SIGKILL);
    return Methods(file)->xSync(Real(file), flags);
}

int FileSize(sqlite3_file* file, sqlite3_int64* size) { return Methods(file)->xFileSize(Real(file), size); }
int Lock(sqlite3_file* file, int kind) { return Methods(file)->xLock(Real(file), kind); }
int Unlock(sqlite3_file* file, int kind) { return Methods(file)->xUnlock(Real(file), kind); }
int Reserved(sqlite3_file* file, int* held) { return Methods(file)->xCheckReservedLock(Real(file), held); }
int Control(sqlite3_file* file, int what, void* with) { return Methods(file)->xFileControl(Real(file), what, with); }
int SectorSize(sqlite3_file* file) { return Methods(file)->xSectorSize(Real(file)); }
int Traits(sqlite3_file* file) { return Methods(file)->xDeviceCharacteristics(Real(file)); }
int ShmMap(sqlite3_file* file, int region, int size, int extend, void volatile** at) {
    return Methods(file)->xShmMap(Real(file), region, size, extend, at);
}
int ShmLock(sqlite3_file* file, int offset, int count, int flags) {
    return Methods(file)->xShmLock(Real(file), offset, count, flags);
}
void ShmBarrier(sqlite3_file* file) { Methods(file)->xShmBarrier(Real(file)); }
int ShmUnmap(sqlite3_file* file, int remove) { return Methods(file)->xShmUnmap(Real(file), remove); }

/// Version 2: with the shared memory of the write-ahead log, without reading by mapping.
constexpr sqlite3_io_methods kMethods{2,       Close,      Read,     Write,   Truncate,   Sync,   FileSize,
                                      Lock,    Unlock,     Reserved, Control, SectorSize, Traits, ShmMap,
                                      ShmLock, ShmBarrier, ShmUnmap, nullptr, nullptr};

int Open(sqlite3_vfs* layer, const char* name, sqlite3_file* file, int flags, int* outFlags) {
    auto* const below = static_cast<sqlite3_vfs*>(layer->pAppData);
    auto* const own = new (file) File{{nullptr}, reinterpret_cast<sqlite3_file*>(reinterpret_cast<File*>(file) + 1)};
    const int code = below->xOpen(below, name, own->real, flags, outFlags);
    if (own->real->pMethods != nullptr) own->base.pMethods = &kMethods;
    return code;
}

}  // namespace

void Watch() {
    static sqlite3_vfs layer;
    if (layer.zName == nullptr) {
        sqlite3_vfs* const below = sqlite3_vfs_find(nullptr);
        if (below == nullptr) throw std::runtime_error("SQLite has no file system");
        layer = *below;
        layer.pNext = nullptr;
        layer.zName = "faults";
        layer.pAppData = below;
        layer.szOsFile = static_cast<int>(sizeof(File)) + below->szOsFile;
        layer.xOpen = Open;
    }
    if (sqlite3_vfs_register(&layer, 1) != SQLITE_OK) throw std::runtime_error("no layer for the test");
}

void FailAfter(std::int64_t count, Fault kind) {
    faultAt = (kind == Fault::Unread ? reads : writes) + count;
    fault = kind;
}

void Heal() { fault = Fault::None; }

std::int64_t Writes() { return writes; }
std::int64_t Reads() { return reads; }

}  // namespace faults::disk
