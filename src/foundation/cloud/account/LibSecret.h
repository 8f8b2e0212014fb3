#pragma once

namespace mirror {

// What libsecret, which QtKeychain loads, does to a process unasked, and QtKeychain lets it. Both
// are to be called on the thread on which passwords are read.

/// Without this, the first password that is read has GLib end the process (SIGTERM) when the
/// session bus goes away.
void surviveLossOfBus();

/// A keyring that was started anew does not know the session that libsecret keeps for the life of
/// the process. This drops it; the next question opens another.
void endKeyringSession();

} // namespace mirror
