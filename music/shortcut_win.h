#pragma once
// Sound and music names may name a shell shortcut (.lnk) to the real file.

#include <string>

namespace vrl {

// The target of the shortcut at `path`, or `path` unchanged when it is not a shortcut that the
// shell can read (a plain file, a missing file, a broken or non-file shortcut). Needs COM
// initialised on the calling thread; the program does that at start.
std::u16string ResolveShortcut(const std::u16string& path);

}  // namespace vrl
