#include "tests/Torture/Machine.h"

#include <array>
#include <atomic>
#include <cerrno>
#include <cstdarg>
#include <cstdio>
#include <cstdlib>
#include <ctime>
#include <dlfcn.h>
#include <fcntl.h>
#include <mutex>
#include <pthread.h>
#include <string_view>
#include <sys/stat.h>
#include <sys/syscall.h>
#include <unistd.h>

namespace vantix {

namespace {

/// What a call asks of the machine's disk: to change without taking more room, or to take more.
enum class Use { read, change, grow };

/// Never destroyed: files are used until the very end of the process.
struct State {
    std::atomic<bool> isWatching = false;
    std::string folder;
    std::atomic<int> error = 0;
    std::atomic<bool> isSlow = false;
    std::atomic<long> from = 0, calls = 0;
    std::mutex recording;
    std::FILE* record = nullptr;
    std::atomic<long> dayShift = 0, steadyShift = 0, stillAt = 0;
};

State& state() {
    static auto* state = new State;
    return *state;
}

/// The C library's own function.
template <typename Function>
Function* own(const char* name) {
    return reinterpret_cast<Function*>(::dlsym(RTLD_NEXT, name));
}

std::string pathOf(int descriptor) {
    std::array<char, 4096> path{};
    std::string link = "/proc/self/fd/" + std::to_string(descriptor);
    ssize_t size = ::readlink(link.c_str(), path.data(), path.size());
    return {path.data(), size < 0 ? 0 : static_cast<std::size_t>(size)};
}

std::string pathOf(int folder, const char* name) {
    return name[0] == '/' || folder == AT_FDCWD ? name : pathOf(folder) + "/" + name;
}

/// 0 when the machine carries the next call out.
int refusal(Use use) {
    long number = state().calls++;
    if (number < state().from) return 0;
    if (state().isSlow) ::usleep(100'000);
    switch (int error = state().error) {
        case ENOSPC:
            return use == Use::grow ? error : 0;
        case EROFS:
            return use == Use::read ? 0 : error;
        case EIO:
            return number == state().from ? error : 0;
        default:
            return 0;
    }
}

void record(char kind, const std::string& file, long at = 0, std::string_view data = {}) {
    if (!state().record) return;
    std::fprintf(state().record, "%c %ld %zu %zu\n%s", kind, at, file.size(), data.size(), file.c_str());
    std::fwrite(data.data(), 1, data.size(), state().record);
    std::fflush(state().record);
}

/// Carries a call out, unless it is refused, and records the change that it made.
template <typename Call, typename Made>
auto perform(const std::string& file, Use use, Call call, Made change) -> decltype(call()) {
    if (!state().isWatching || !file.starts_with(state().folder)) return call();
    if (int error = refusal(use)) {
        errno = error;
        return -1;
    }
    std::lock_guard lock(state().recording);
    auto outcome = call();
    int error = errno;
    if (outcome >= 0) change(outcome);
    errno = error;
    return outcome;
}

constexpr auto nothing = [](auto) {};

int openAt(int folder, const char* name, int flags, mode_t mode) {
    std::string file = pathOf(folder, name);
    bool isNew = (flags & O_CREAT) && ::access(file.c_str(), F_OK) != 0;
    Use use = isNew ? Use::grow : (flags & O_ACCMODE) == O_RDONLY ? Use::read : Use::change;
    return perform(
        file, use, [&] { return own<int(int, const char*, int, ...)>("openat")(folder, name, flags, mode); },
        [&](int) {
            if (isNew) record('c', file);
            if (flags & O_TRUNC) record('t', file);
        });
}

template <typename... Arguments>
ssize_t readBy(const char* name, int descriptor, Arguments... arguments) {
    auto call = [&] { return own<ssize_t(int, Arguments...)>(name)(descriptor, arguments...); };
    return perform(pathOf(descriptor), Use::read, call, nothing);
}

ssize_t writeAt(int descriptor, const void* data, long at, const auto& call) {
    std::string file = pathOf(descriptor);
    return perform(file, Use::grow, call, [&](ssize_t written) {
        record('w', file, at, {static_cast<const char*>(data), static_cast<std::size_t>(written)});
    });
}

int cut(int descriptor, off_t size) {
    std::string file = pathOf(descriptor);
    return perform(
        file, Use::change, [&] { return own<int(int, off_t)>("ftruncate")(descriptor, size); },
        [&](int) { record('t', file, size); });
}

int sync(const char* name, int descriptor) {
    std::string file = pathOf(descriptor);
    return perform(
        file, Use::read, [&] { return own<int(int)>(name)(descriptor); }, [&](int) { record('s', file); });
}

int renameAt(int folder, const char* from, int newFolder, const char* to) {
    std::string file = pathOf(folder, from), newFile = pathOf(newFolder, to);
    return perform(
        file, Use::change,
        [&] { return own<int(int, const char*, int, const char*)>("renameat")(folder, from, newFolder, to); },
        [&](int) { record('r', file, 0, newFile); });
}

int removeAt(int folder, const char* name, int flags) {
    std::string file = pathOf(folder, name);
    return perform(
        file, Use::change, [&] { return own<int(int, const char*, int)>("unlinkat")(folder, name, flags); },
        [&](int) { record('u', file); });
}

mode_t modeOf(int flags, va_list& arguments) { return flags & O_CREAT ? va_arg(arguments, mode_t) : 0; }

int tell(clockid_t clock, timespec& time) {
    auto outcome = static_cast<int>(::syscall(SYS_clock_gettime, clock, &time));
    if (clock == CLOCK_MONOTONIC) time.tv_sec += state().steadyShift;
    if (clock != CLOCK_REALTIME) return outcome;
    time.tv_sec += state().dayShift;
    if (long still = state().stillAt) time = {still, 0};
    return outcome;
}

}  // namespace

void Machine::watch(const std::filesystem::path& folder) {
    state().folder = folder;
    state().isWatching = true;
}

void Machine::fail(const std::string& fault, long from) {
    state().error = fault == "full" ? ENOSPC : fault == "read-only" ? EROFS : fault == "broken" ? EIO : 0;
    state().isSlow = fault == "slow";
    state().from = from;
    state().calls = 0;
}

void Machine::setClock(const std::string& change) {
    if (change == "still") {
        state().stillAt = ::time(nullptr);
    } else if (change.starts_with('+')) {
        state().steadyShift += std::atol(change.c_str());
    } else {
        state().stillAt = 0;
        state().dayShift += std::atol(change.c_str());
    }
}

long Machine::calls() { return state().calls; }

void Machine::recordIn(const std::filesystem::path& file) { state().record = std::fopen(file.c_str(), "ae"); }

}  // namespace vantix

// The calls as the libraries make them.
#pragma GCC visibility push(default)
extern "C" {

int open(const char* name, int flags, ...) {
    va_list arguments;
    va_start(arguments, flags);
    mode_t mode = vantix::modeOf(flags, arguments);
    va_end(arguments);
    return vantix::openAt(AT_FDCWD, name, flags, mode);
}
int open64(const char* name, int flags, ...) __attribute__((alias("open")));
int openat(int folder, const char* name, int flags, ...) {
    va_list arguments;
    va_start(arguments, flags);
    mode_t mode = vantix::modeOf(flags, arguments);
    va_end(arguments);
    return vantix::openAt(folder, name, flags, mode);
}
int openat64(int folder, const char* name, int flags, ...) __attribute__((alias("openat")));

ssize_t read(int descriptor, void* data, size_t size) { return vantix::readBy("read", descriptor, data, size); }
ssize_t pread(int descriptor, void* data, size_t size, off_t at) {
    return vantix::readBy("pread", descriptor, data, size, at);
}
ssize_t pread64(int descriptor, void* data, size_t size, off_t at) __attribute__((alias("pread")));

ssize_t write(int descriptor, const void* data, size_t size) {
    return vantix::writeAt(descriptor, data, ::lseek(descriptor, 0, SEEK_CUR), [&] {
        return vantix::own<ssize_t(int, const void*, size_t)>("write")(descriptor, data, size);
    });
}
ssize_t pwrite(int descriptor, const void* data, size_t size, off_t at) {
    return vantix::writeAt(descriptor, data, at, [&] {
        return vantix::own<ssize_t(int, const void*, size_t, off_t)>("pwrite")(descriptor, data, size, at);
    });
}
ssize_t pwrite64(int descriptor, const void* data, size_t size, off_t at) __attribute__((alias("pwrite")));

int ftruncate(int descriptor, off_t size) noexcept { return vantix::cut(descriptor, size); }
int ftruncate64(int descriptor, off_t size) noexcept __attribute__((alias("ftruncate")));
int fsync(int descriptor) { return vantix::sync("fsync", descriptor); }
int fdatasync(int descriptor) { return vantix::sync("fdatasync", descriptor); }

int rename(const char* from, const char* to) noexcept { return vantix::renameAt(AT_FDCWD, from, AT_FDCWD, to); }
int renameat(int folder, const char* from, int newFolder, const char* to) noexcept {
    return vantix::renameAt(folder, from, newFolder, to);
}
int unlink(const char* name) noexcept { return vantix::removeAt(AT_FDCWD, name, 0); }
int unlinkat(int folder, const char* name, int flags) noexcept { return vantix::removeAt(folder, name, flags); }
int remove(const char* name) noexcept { return vantix::removeAt(AT_FDCWD, name, 0); }
int mkdir(const char* name, mode_t mode) noexcept {
    return vantix::perform(
        name, vantix::Use::grow, [&] { return vantix::own<int(const char*, mode_t)>("mkdir")(name, mode); },
        vantix::nothing);
}

/// The machine's own clock is the one that is waited by.
int pthread_cond_clockwait(pthread_cond_t* condition, pthread_mutex_t* mutex, clockid_t clock, const timespec* until) {
    timespec end = *until;
    if (clock == CLOCK_MONOTONIC) end.tv_sec -= vantix::state().steadyShift;
    return vantix::own<int(pthread_cond_t*, pthread_mutex_t*, clockid_t, const timespec*)>("pthread_cond_clockwait")(
        condition, mutex, clock, &end);
}
int clock_gettime(clockid_t clock, timespec* time) noexcept { return vantix::tell(clock, *time); }
time_t time(time_t* out) noexcept {
    timespec now{};
    vantix::tell(CLOCK_REALTIME, now);
    return out ? *out = now.tv_sec : now.tv_sec;
}

}  // extern "C"
#pragma GCC visibility pop
