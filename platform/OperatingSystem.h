// The one seam between Marnock and the operating system: the calls that the library needs, under their Windows names.
//
// Three implementations: Windows (the calls themselves), the POSIX port (the same meaning on a folder that stands for
// the machine, see MachineRoot.h) and, in tests, a scripted fake that can fail the n-th call.
//
// Paths are Windows paths with backslashes on every system, for example C:\Users\alice\Orvnta\DeviceMgr\. Every call
// may be made from any thread; impersonation and GetLastError concern the calling thread alone.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

namespace platform {

using Dword = std::uint32_t;

// An open user token. Owned by whoever got it from WTSQueryUserToken until it is given to CloseHandle.
using UserToken = void*;

// Values of the Windows API, from winnt.h, fileapi.h and winerror.h; the POSIX port reports the same ones.
inline constexpr Dword kInvalidFileAttributes = 0xFFFFFFFF;
inline constexpr Dword kFileAttributeDirectory = 16;
inline constexpr Dword kFileAttributeNormal = 128;
inline constexpr Dword kErrorFileNotFound = 2;
inline constexpr Dword kErrorPathNotFound = 3;
inline constexpr Dword kErrorAccessDenied = 5;
inline constexpr Dword kErrorInvalidHandle = 6;
inline constexpr Dword kErrorGeneralFailure = 31;
inline constexpr Dword kErrorSharingViolation = 32;
inline constexpr Dword kErrorLockViolation = 33;
inline constexpr Dword kErrorAlreadyExists = 183;
inline constexpr Dword kErrorFileTooLarge = 223;
inline constexpr Dword kErrorMoreData = 234;
inline constexpr Dword kErrorNoToken = 1008;
inline constexpr Dword kErrorNoneMapped = 1332;

class OperatingSystem {
 public:
  virtual ~OperatingSystem() = default;

  // The session of the physical console. POSIX: always 1.
  virtual Dword WTSGetActiveConsoleSessionId() = 0;

  // Stores the token of the user signed in to `session` and returns true; false when nobody is signed in or the caller
  // lacks the privilege. POSIX: always false with kErrorNoToken, since the port runs as the console user itself.
  virtual bool WTSQueryUserToken(Dword session, UserToken* token) = 0;

  // Makes the calling thread act as the token's user. Returns the call's BOOL as it stands: 1 on success. POSIX: there
  // are no tokens, so 0 with kErrorInvalidHandle, as for CloseHandle.
  virtual int ImpersonateLoggedOnUser(UserToken token) = 0;

  // Ends the calling thread's impersonation. Returns false on failure.
  virtual bool RevertToSelf() = 0;

  // Writes the calling thread's user in SAM-compatible form (MACHINE\account) with a terminating zero. `size` is the
  // capacity of `buffer` in characters, and on success the number written without the zero. On failure the result is
  // false and the buffer untouched; when it was too small, GetLastError is kErrorMoreData and `size` what is needed.
  // POSIX: MARNOCK_CONSOLE_USER where that is set and not empty, else HOSTNAME\account of the effective user, or
  // kErrorNoneMapped when the user database does not know that one.
  virtual bool GetUserNameSamCompatible(wchar_t* buffer, Dword* size) = 0;

  // Closes a token. Returns false on failure.
  virtual bool CloseHandle(UserToken token) = 0;

  // The error number of the calling thread's last failed call above or below; a call that succeeds need not clear it.
  // POSIX: numbers without a Windows counterpart become kErrorGeneralFailure.
  virtual Dword GetLastError() = 0;

  // The attribute bits of a file or directory, or kInvalidFileAttributes. POSIX: kFileAttributeDirectory or
  // kFileAttributeNormal; symbolic links are followed, so one that leads nowhere counts as absent.
  virtual Dword GetFileAttributesW(const std::wstring& path) = 0;

  // Renames within one volume. Fails with kErrorAlreadyExists when `to` exists, on the POSIX port as well.
  virtual bool MoveFileW(const std::wstring& from, const std::wstring& to) = 0;

  // Deletes a file; a directory is refused with kErrorAccessDenied.
  virtual bool DeleteFileW(const std::wstring& path) = 0;

  // std::filesystem::exists, create_directories and permissions(owner_all | others_read, add) on `path`. Failures that
  // the file system reports are thrown as std::filesystem::filesystem_error.
  virtual bool Exists(const std::wstring& path) = 0;
  virtual bool CreateDirectories(const std::wstring& path) = 0;
  virtual void AddOwnerAllOthersRead(const std::wstring& path) = 0;

  // Replaces `bytes` by the file's content. Nobody who writes, renames or deletes the file meanwhile is hindered, so
  // what is read may be a mixture of before and after. Fails with kErrorAccessDenied for a directory and with
  // kErrorFileTooLarge for a file of more than `limitBytes`; `bytes` is then unspecified.
  virtual bool ReadSharedFile(const std::wstring& path, std::size_t limitBytes, std::string* bytes) = 0;

  // Replaces `names` by the names of what lies in the directory, folders left out, in no particular order.
  virtual bool ListFiles(const std::wstring& directory, std::vector<std::wstring>* names) = 0;

  // Returns once what was made, renamed and deleted in the directory is on the disk. A file system that cannot be told
  // to is left to its own order of name changes, and the call succeeds all the same.
  virtual bool SyncDirectory(const std::wstring& path) = 0;

  // The name under which SQLite opens `path` (UTF-8). Windows: the path itself; POSIX: its place in the machine root.
  virtual std::string SqliteFileName(const std::string& path) = 0;

  // The implementation in use: the real one unless a test put another in its place.
  static OperatingSystem& Get();

  // Puts `replacement` (not owned; null for the real one) in place for the whole process and returns what was there.
  // For tests, while no other thread uses the seam.
  static OperatingSystem* Replace(OperatingSystem* replacement);
};

// The operating system that the program runs on.
OperatingSystem& RealOperatingSystem();

}  // namespace platform
