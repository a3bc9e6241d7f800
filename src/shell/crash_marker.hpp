// What happens inside the process at a fatal signal: one line is appended to a file that has been
// open since the start.
//
// Plain C functions and data, because a signal handler may call hardly anything:
// `write_crash_marker` runs on any thread at any moment, and uses nothing but its stack, `write`,
// `getpid` and `kill`. Everything else of a crash report happens outside the handler.
#pragma once

extern "C" {

/// The file that a fatal signal is noted in; negative when there is none.
extern volatile int crash_log_fd;

/// The handler: appends "Velotap crash: signal N" and ends the process with the same signal, so
/// that the system's own handling of crashes still happens.
void write_crash_marker(int signal);

/// (Re)opens the file, for the user alone, and installs the handler for SIGABRT, SIGSEGV, SIGBUS,
/// SIGILL, SIGFPE and SIGTRAP. Without a file the handler only ends the process. Main thread.
void MCInstallCrashSignalHandlers(const char* path);
}
