#include "records/postgresql_server.h"

#include <fcntl.h>
#include <grp.h>
#include <pwd.h>
#include <signal.h>
#include <sys/prctl.h>
#include <sys/wait.h>
#include <unistd.h>

#include <array>
#include <chrono>
#include <filesystem>
#include <stdexcept>
#include <thread>
#include <vector>

namespace orvane::test {
namespace {

namespace fs = std::filesystem;

constexpr std::chrono::seconds kLongestStart{60};
constexpr const char* kUser = "orvane";

/// The server refuses to run as a superuser.
const passwd* OrdinaryUser() { return ::geteuid() == 0 ? ::getpwnam("nobody") : nullptr; }

[[noreturn]] void Become(const std::vector<std::string>& command, int output, bool ordinary) {
  if (const passwd* user = ordinary ? OrdinaryUser() : nullptr) {
    if (::setgroups(0, nullptr) != 0 || ::setgid(user->pw_gid) != 0 || ::setuid(user->pw_uid) != 0) ::_exit(127);
  }
  ::prctl(PR_SET_PDEATHSIG, SIGQUIT);
  if (::getppid() == 1) ::_exit(127);
  ::dup2(output, STDOUT_FILENO);
  ::dup2(output, STDERR_FILENO);
  std::vector<char*> arguments;
  for (const std::string& word : command) arguments.push_back(const_cast<char*>(word.c_str()));
  arguments.push_back(nullptr);
  ::execv(arguments[0], arguments.data());
  ::_exit(127);
}

pid_t Started(const std::vector<std::string>& command, int output, bool ordinary) {
  const pid_t process = ::fork();
  if (process == 0) Become(command, output, ordinary);
  return process;
}

std::string Run(const std::vector<std::string>& command, bool ordinary, int& status) {
  std::array<int, 2> pipe{};
  if (::pipe2(pipe.data(), O_CLOEXEC) != 0) throw std::runtime_error("no pipe");
  const pid_t process = Started(command, pipe[1], ordinary);
  ::close(pipe[1]);
  std::string said;
  std::array<char, 4096> part{};
  for (ssize_t size = 0; (size = ::read(pipe[0], part.data(), part.size())) > 0;) {
    said.append(part.data(), static_cast<std::size_t>(size));
  }
  ::close(pipe[0]);
  int ending = 0;
  ::waitpid(process, &ending, 0);
  status = WIFEXITED(ending) ? WEXITSTATUS(ending) : -1;
  return said;
}

}  // namespace

std::string OutputOf(const std::vector<std::string>& command, int* status) {
  int ending = 0;
  std::string said = Run(command, false, ending);
  if (status != nullptr) *status = ending;
  while (said.ends_with('\n')) said.pop_back();
  return said;
}

std::string PostgresqlServer::Programs() {
  const std::string folder = "/usr/lib/postgresql/15/bin";
  return fs::exists(folder + "/initdb") && fs::exists(folder + "/psql") ? folder : "";
}

PostgresqlServer::PostgresqlServer() {
  if (const passwd* user = OrdinaryUser();
      user != nullptr && ::chown(folder_.Path().c_str(), user->pw_uid, user->pw_gid) != 0) {
    throw std::runtime_error("the server's folder is not its own");
  }
  int status = 0;
  const std::string said = Run({Programs() + "/initdb", "-D", folder_.Path("data"), "-U", kUser, "-A", "trust",
                                "--no-sync", "-E", "UTF8", "--locale=C.UTF-8", "--no-instructions"},
                               true, status);
  if (status != 0) throw std::runtime_error("initdb: " + said);
  Start();
}

PostgresqlServer::~PostgresqlServer() { Stop(); }

void PostgresqlServer::Start() {
  const int output = ::open(folder_.Path("log").c_str(), O_WRONLY | O_CREAT | O_APPEND | O_CLOEXEC, 0600);
  process_ = Started({Programs() + "/postgres", "-D", folder_.Path("data"), "-c", "listen_addresses=", "-c",
                      "unix_socket_directories=" + folder_.Path(), "-c", "fsync=off", "-c", "shared_buffers=16MB",
                      "-c", "max_connections=60", "-c", "autovacuum=off"},
                     output, true);
  ::close(output);
  const auto until = std::chrono::steady_clock::now() + kLongestStart;
  while (!Answers()) {
    if (std::chrono::steady_clock::now() > until) throw std::runtime_error(folder_.ContentOf("log"));
    std::this_thread::sleep_for(std::chrono::milliseconds(20));
  }
}

void PostgresqlServer::Stop() {
  if (process_ <= 0) return;
  ::kill(process_, SIGQUIT);
  ::waitpid(process_, nullptr, 0);
  process_ = -1;
}

bool PostgresqlServer::Answers() const {
  int status = 0;
  static_cast<void>(OutputOf({Programs() + "/pg_isready", "-q", "-h", folder_.Path()}, &status));
  return status == 0;
}

std::string PostgresqlServer::NewDatabase() {
  const std::string server = "host=" + folder_.Path() + " user=" + kUser;
  const std::string name = "records" + std::to_string(++databases_);
  if (const std::string said = Ask(server + " dbname=postgres", "CREATE DATABASE " + name);
      said != "CREATE DATABASE") {
    throw std::runtime_error(said);
  }
  return server + " dbname=" + name;
}

std::string PostgresqlServer::Ask(const std::string& conninfo, const std::string& words) const {
  return OutputOf({Programs() + "/psql", "-X", "-A", "-t", "-d", conninfo, "-c", words});
}

}  // namespace orvane::test
