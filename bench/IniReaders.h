// Other ways to read the same information file, each answering the questions that a catalogue load asks.
#pragma once

#include <string>

/// Every reader looks up the four keys of all "REFERANCE_FILE_%d" sections, 1 to `count`, and returns the
/// number of characters found, so that no work can be left out.
namespace readers {

/// One read of the bytes and one scan for line ends: the physical limit.
size_t ScanBytes(const std::wstring& file);

/// A plain one-pass index over the bytes with a look-up per key.
size_t PlainIndex(const std::wstring& file, int count);

/// SimpleIni, read once.
size_t SimpleIni(const std::wstring& file, int count);

/// The platform's profile functions.
size_t ProfileFunctions(const std::wstring& file, int count);

/// The shared library's own reader, as the control calls it.
size_t SharedLibrary(const std::wstring& file, int count);

/// The shared library's reader asked for one key: one read and the index.
size_t SharedLibraryIndex(const std::wstring& file);

} // namespace readers
