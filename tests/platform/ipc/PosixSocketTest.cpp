// POSIX port: the socket that stands for a pipe.
#include <fcntl.h>
#include <sys/socket.h>
#include <sys/stat.h>
#include <sys/un.h>
#include <unistd.h>

#include <cstring>
#include <filesystem>
#include <fstream>
#include <system_error>

#include "tests/platform/ipc/IpcTest.h"

namespace {

namespace fs = std::filesystem;

class PosixSocket : public IpcTest {
 protected:
  fs::path Folder() const { return fs::path(::getenv("MARNOCK_ROOT")) / "pipe"; }
  fs::path Path() const { return Folder() / fs::path(pipeName_.substr(pipeName_.rfind(L'\\') + 1)); }

  static mode_t Mode(const fs::path& path) {
    struct stat status {};
    EXPECT_EQ(::stat(path.c_str(), &status), 0) << path;
    return status.st_mode & 07777;
  }

  // A socket at Path() that is bound, and listening or not; the descriptor.
  int BindSocket(bool listening) const {
    fs::create_directories(Folder());
    sockaddr_un address{};
    address.sun_family = AF_UNIX;
    std::strcpy(address.sun_path, Path().c_str());
    const int socket = ::socket(AF_UNIX, SOCK_STREAM, 0);
    EXPECT_EQ(::bind(socket, reinterpret_cast<sockaddr*>(&address), sizeof address), 0);
    if (listening) {
      EXPECT_EQ(::listen(socket, 1), 0);
    }
    return socket;
  }
};

// The text of the std::system_error that `action` throws, or an empty one.
std::string ErrorOf(const std::function<void()>& action) {
  try {
    action();
  } catch (const std::system_error& error) {
    return error.what();
  }
  return {};
}

TEST_F(PosixSocket, LiesInTheMachineRootAndIsItsOwnersAlone) {
  fs::create_directories(Folder());
  fs::permissions(Folder(), fs::perms::all);
  StartHub();
  EXPECT_EQ(Mode(Folder()), 0700U);
  EXPECT_EQ(Mode(Path()), 0600U);
  EXPECT_EQ(Mode(Path().string() + ".lock"), 0600U);
}

TEST_F(PosixSocket, IsRemovedAtTheStop) {
  StartHub();
  EXPECT_TRUE(fs::exists(Path()));
  hub_->StopAccepting();
  EXPECT_FALSE(fs::exists(Path()));
}

TEST_F(PosixSocket, OfAHubThatDiedIsReplaced) {
  ::close(BindSocket(true));
  StartHub();
  EXPECT_NE(RawPeer(pipeName_).SayHello(), -1);
}

TEST_F(PosixSocket, ThatSomebodyListensOnIsNotReplaced) {
  const int socket = BindSocket(true);
  IPCMessageHub hub(pipeName_);
  EXPECT_FALSE(hub.Claim());
  EXPECT_TRUE(fs::exists(Path()));
  ::close(socket);
}

TEST_F(PosixSocket, WhoseBacklogIsFullIsNotReplaced) {
  const int socket = BindSocket(true);
  RawPeer one(pipeName_);
  RawPeer two(pipeName_);
  IPCMessageHub hub(pipeName_);
  EXPECT_FALSE(hub.Claim());
  ::close(socket);
}

TEST_F(PosixSocket, IsNotPutInPlaceOfAFileOfAnotherKind) {
  fs::create_directories(Folder());
  std::ofstream(Path()) << "precious";
  IPCMessageHub hub(pipeName_);
  ASSERT_TRUE(hub.Claim());
  const std::string text = ErrorOf([&] { hub.Start(); });
  EXPECT_NE(text.find("cannot listen on " + Path().string()), std::string::npos) << text;
  EXPECT_EQ(fs::file_size(Path()), 8U);
}

TEST_F(PosixSocket, IsNotMadeWithoutItsLockFile) {
  const std::string lock = Path().string() + ".lock";
  fs::create_directories(lock);
  IPCMessageHub hub(pipeName_);
  const std::string text = ErrorOf([&] { hub.Claim(); });
  EXPECT_NE(text.find(lock), std::string::npos) << text;
}

TEST_F(PosixSocket, IsNotMadeInAFolderThatIsALink) {
  fs::create_directories(Folder().parent_path() / "elsewhere");
  fs::create_directory_symlink("elsewhere", Folder());
  IPCMessageHub hub(pipeName_);
  const std::string text = ErrorOf([&] { hub.Claim(); });
  EXPECT_NE(text.find(Folder().string() + " is not a folder of this user"), std::string::npos) << text;
}

TEST_F(PosixSocket, TakesAPathOf107BytesAndNoLonger) {
  const std::size_t room = 107 - (Folder().string().size() + 1);
  const std::wstring fits(room, L'p');
  IPCMessageHub hub(L"\\\\.\\Pipe\\" + fits);
  ASSERT_TRUE(hub.Claim());
  hub.Start();
  EXPECT_NE(RawPeer(fits).SayHello(), -1);
  IPCMessageHub tooLong(L"\\\\.\\Pipe\\" + fits + L"p");
  const std::string path = (Folder() / std::string(room + 1, 'p')).string();
  const std::string text = ErrorOf([&] { tooLong.Claim(); });
  EXPECT_NE(text.find("too long for the path of a socket: " + path), std::string::npos) << text;
  const std::string clientText = ErrorOf([&] { IPCMessageClient(5, false, false, fits + L"p"); });
  EXPECT_NE(clientText.find(path), std::string::npos) << clientText;
}

TEST_F(PosixSocket, HasTheLastComponentOfThePipesNameInUtf8) {
  const std::wstring name = L"\\\\.\\Pipe\\Ger\u00e4te";
  IPCMessageHub hub(name);
  ASSERT_TRUE(hub.Claim());
  hub.Start();
  EXPECT_TRUE(fs::exists(Folder() / "Ger\xc3\xa4te"));
}

TEST_F(PosixSocket, NeedsAName) {
  for (const std::wstring& name :
       {std::wstring(), std::wstring(L"\\\\.\\Pipe\\"), std::wstring(L"a\\."), std::wstring(L"a\\..")}) {
    IPCMessageHub hub(name);
    EXPECT_NE(ErrorOf([&] { hub.Claim(); }), "");
  }
}

}  // namespace
