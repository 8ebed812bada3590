// Leaving the terminal: the program goes on as a child of its own session once it has got to work.
#ifndef NETINFO_RECORDER_BACKGROUND_H
#define NETINFO_RECORDER_BACKGROUND_H

namespace recorder {

/// Call before any thread exists. Returns in the child alone; the parent waits for reportReady() or the child's end and
/// exits with 0 or the child's exit code.
void detach();

/// Lets the waiting parent go, and sends messages to the system log from now on. Does nothing without detach().
void reportReady();

} // namespace recorder

#endif
