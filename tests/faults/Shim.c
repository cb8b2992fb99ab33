/* Preloaded into Wine's programs and its server: lets a chosen file system call fail, or kills the program that
   asked for it. Calls count that change something below the folder MXOV_FAULT_ROOT; MXOV_FAULT_CONTROL names
   the file, shared with the tests, that says which one to spoil. */
#define _GNU_SOURCE
#include <dlfcn.h>
#include <errno.h>
#include <fcntl.h>
#include <limits.h>
#include <signal.h>
#include <stdarg.h>
#include <stdio.h>
#include <stdlib.h>
#include <string.h>
#include <sys/mman.h>
#include <sys/stat.h>
#include <sys/uio.h>
#include <unistd.h>

enum { COUNT, KILL, HALF_AND_KILL, NO_SPACE, IO_ERROR, SHORT, READ_ONLY, FLUSH_ERROR, INFORMATION_FLUSH_ERROR,
       DISK_FULL };
enum { WRITE = 1, FLUSH = 2, CREATE = 3 }; /* kinds of calls that some modes are about */

struct control {
    int armed, target, mode; /* set by the tests; target counts from 1 */
    int count, fired;        /* set here */
    int victim;              /* the process to kill; set by the tests */
    char spoilt[64];         /* the name of the file that the spoilt call was about; set here */
};

static struct control *control;
static const char *root;
static size_t rootLength;

__attribute__((constructor)) static void start(void) {
    const char *name = getenv("MXOV_FAULT_CONTROL");
    root = getenv("MXOV_FAULT_ROOT");
    if (!name || !root)
        return;
    rootLength = strlen(root);
    int fd = open(name, O_RDWR | O_CLOEXEC);
    if (fd < 0)
        return;
    void *place = mmap(NULL, sizeof(struct control), PROT_READ | PROT_WRITE, MAP_SHARED, fd, 0);
    close(fd);
    if (place == MAP_FAILED)
        return;
    control = place;
}

static int concerns(const char *path) {
    if (!control || !control->armed || !path)
        return 0;
    char full[PATH_MAX];
    if (path[0] != '/') { /* relative to the current folder, as the server opens files */
        if (!getcwd(full, sizeof(full)))
            return 0;
        strncat(full, "/", sizeof(full) - strlen(full) - 1);
        strncat(full, path, sizeof(full) - strlen(full) - 1);
        path = full;
    }
    /* Wine reaches drive Z: through a link. */
    return strstr(path, root) != NULL;
}

static int concernsFd(int fd, char path[PATH_MAX]) {
    char link[64];
    if (!control || !control->armed)
        return 0;
    snprintf(link, sizeof(link), "/proc/self/fd/%d", fd);
    ssize_t length = readlink(link, path, PATH_MAX - 1);
    if (length < 0)
        return 0;
    path[length] = 0;
    return strncmp(path, root, rootLength) == 0;
}

static void killVictim(void) {
    kill(control->victim, SIGKILL);
}

/* What to do with the next call that concerns the folder: 0 go on, 1 fail, 2 half of it. */
static int judge(int kind, const char *path) {
    if (control->mode == FLUSH_ERROR || control->mode == INFORMATION_FLUSH_ERROR) {
        /* Of the information file, or of any other. */
        int information = strstr(path, "mxinfo.ini") != NULL;
        if (kind != FLUSH || information != (control->mode == INFORMATION_FLUSH_ERROR))
            return 0;
    }
    /* From the chosen call on, and for calls that need room only. */
    if (control->mode == DISK_FULL && kind != WRITE && kind != CREATE)
        return 0;
    int number = __sync_add_and_fetch(&control->count, 1);
    if (control->mode == DISK_FULL) {
        if (number < control->target)
            return 0;
        control->fired = 1;
        errno = ENOSPC;
        return 1;
    }
    if (control->mode == READ_ONLY) {
        control->fired = 1;
        errno = EROFS;
        return 1;
    }
    if (control->mode == COUNT || number != control->target)
        return 0;
    if (kind != WRITE && (control->mode == HALF_AND_KILL || control->mode == SHORT))
        return 0;
    const char *slash = strrchr(path, '/');
    snprintf(control->spoilt, sizeof(control->spoilt), "%s", slash ? slash + 1 : path);
    control->fired = 1;
    if (control->mode == KILL)
        killVictim();
    errno = control->mode == NO_SPACE ? ENOSPC : EIO;
    return control->mode == HALF_AND_KILL || control->mode == SHORT ? 2 : 1;
}

#define NEXT(type, name) \
    static type (*next)(); \
    if (!next) \
        next = (type(*)())dlsym(RTLD_NEXT, name)

#define PATH_CALL(name, parameters, path, ...) \
    int name parameters { \
        NEXT(int, #name); \
        if (concerns(path) && judge(0, path)) \
            return -1; \
        return next(__VA_ARGS__); \
    }
PATH_CALL(rename, (const char *from, const char *to), to, from, to)
PATH_CALL(renameat, (int a, const char *from, int b, const char *to), to, a, from, b, to)
PATH_CALL(unlink, (const char *path), path, path)
PATH_CALL(rmdir, (const char *path), path, path)
PATH_CALL(mkdir, (const char *path, mode_t mode), path, path, mode)
PATH_CALL(chmod, (const char *path, mode_t mode), path, path, mode)

#define FD_CALL(name, kind, parameters, fd, ...) \
    int name parameters { \
        NEXT(int, #name); \
        char path[PATH_MAX]; \
        if (concernsFd(fd, path) && judge(kind, path)) \
            return -1; \
        return next(__VA_ARGS__); \
    }
FD_CALL(fsync, FLUSH, (int fd), fd, fd)
FD_CALL(fdatasync, FLUSH, (int fd), fd, fd)
FD_CALL(ftruncate, 0, (int fd, off_t size), fd, fd, size)
FD_CALL(ftruncate64, 0, (int fd, off_t size), fd, fd, size)
FD_CALL(futimens, 0, (int fd, const struct timespec *times), fd, fd, times)
FD_CALL(fchmod, 0, (int fd, mode_t mode), fd, fd, mode)

#define OPEN_CALL(name) \
    int name(const char *path, int flags, ...) { \
        NEXT(int, #name); \
        va_list list; \
        va_start(list, flags); \
        mode_t mode = flags & (O_CREAT | O_TMPFILE) ? va_arg(list, mode_t) : 0; \
        va_end(list); \
        if ((flags & (O_CREAT | O_TRUNC)) && concerns(path) && judge(CREATE, path)) \
            return -1; \
        return next(path, flags, mode); \
    }
OPEN_CALL(open)
OPEN_CALL(open64)

static size_t sizeOf(const struct iovec *parts, int count) {
    size_t size = 0;
    for (int i = 0; i < count; ++i)
        size += parts[i].iov_len;
    return size;
}

#define WRITE_CALL(name, parameters, size, half, ...) \
    ssize_t name parameters { \
        NEXT(ssize_t, #name); \
        char path[PATH_MAX]; \
        if (concernsFd(fd, path)) { \
            switch (judge(WRITE, path)) { \
            case 1: return -1; \
            case 2: { \
                size_t part = (size) / 2; \
                ssize_t done = half; \
                if (control->mode == HALF_AND_KILL) \
                    killVictim(); \
                return done; \
            } \
            } \
        } \
        return next(__VA_ARGS__); \
    }
WRITE_CALL(write, (int fd, const void *data, size_t size), size, next(fd, data, part), fd, data, size)
WRITE_CALL(pwrite, (int fd, const void *data, size_t size, off_t at), size, next(fd, data, part, at), fd, data, size, at)
WRITE_CALL(pwrite64, (int fd, const void *data, size_t size, off_t at), size, next(fd, data, part, at), fd, data, size, at)
WRITE_CALL(writev, (int fd, const struct iovec *parts, int count), sizeOf(parts, count),
           write(fd, parts[0].iov_base, part < parts[0].iov_len ? part : parts[0].iov_len), fd, parts, count)
