#pragma once

// Comes before each ordinary source when it is compiled as for macOS: the
// headers that the sources use, read once for all of them, and then the names
// that this system has and macOS has not, as errors.

#include <QApplication>
#include <QMainWindow>
#include <QtConcurrentRun>
#include <QtCore>
#include <QtXml>

#include <dirent.h>
#include <fcntl.h>
#include <poll.h>
#include <sys/stat.h>
#include <sys/types.h>
#include <unistd.h>

#ifndef Q_OS_MACOS
#error "Qt's headers do not take their macOS branch"
#endif

// Names that only macOS has.
#include "FileCalls.h"

#pragma GCC poison accept4 copy_file_range dup3 epoll_create1 eventfd fallocate fdatasync gettid inotify_init1
#pragma GCC poison memfd_create mkostemp pipe2 posix_fadvise ppoll prctl readahead sendfile statx            \
    sync_file_range syncfs
#pragma GCC poison canonicalize_file_name get_current_dir_name program_invocation_name strchrnul
#undef AT_EMPTY_PATH
#undef MSG_NOSIGNAL
#undef O_DIRECT
#undef O_NOATIME
#undef O_PATH
#undef O_TMPFILE
#undef POLLRDHUP
#pragma GCC poison AT_EMPTY_PATH MSG_NOSIGNAL O_DIRECT O_NOATIME O_PATH O_TMPFILE POLLRDHUP
