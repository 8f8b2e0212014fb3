#pragma once

namespace mirror {

/// From now on the kernel leaves this process's own memory, stacks and all, out of its core dumps,
/// and out of those of the processes that it starts: passwords are in it. To be called before one
/// is fetched; from any thread, also more than once. Where the kernel refuses, a diagnostic line
/// says so.
///
/// The process stays dumpable otherwise: of one that is not, /proc belongs to root, and the
/// desktop's portals cannot tell who asks them.
void keepMemoryOutOfCoreDumps();

} // namespace mirror
