#include "server/link/communications_client.h"

#include <exception>
#include <utility>

#include "platform/failure.h"
#include "platform/file_access.h"
#include "platform/text.h"
#include "platform/whole_file.h"
#include "platform/xml/xml_escape.h"
#include "server/storage/server_folders.h"

namespace server {
namespace {

using platform::Failure;
using platform::XmlEscaped;

std::filesystem::path LocalPath(const std::string& path) {
  return platform::ReplaceAll(path, "\\", "/");
}

/// The file of that name in `folder`, an exact name first; throws Failure kNotFound where there is none.
std::filesystem::path FindFile(const std::filesystem::path& folder, const std::string& name) {
  if (std::filesystem::is_regular_file(folder / name)) return folder / name;
  std::error_code unreadable;  // a folder that is not there has no file either
  for (const auto& entry : std::filesystem::directory_iterator(folder, unreadable)) {
    if (platform::EqualsIgnoringCase(entry.path().filename().string(), name) && entry.is_regular_file()) {
      return entry.path();
    }
  }
  throw Failure(Failure::Kind::kNotFound, "The server has no file \"" + name + "\".");
}

}  // namespace

CommunicationsClientProvider::CommunicationsClientProvider(platform::EventQueue& events,
                                                           const std::filesystem::path& data_folder,
                                                           platform::ContentCheck check)
    : events_(events),
      template_folder_(TemplateFolder(data_folder)),
      check_(std::move(check)),
      client_(std::make_shared<CommunicationsClient>()),
      unfinished_(std::make_shared<std::atomic<int>>(0)),
      thread_([this] { Run(); }) {}

CommunicationsClientProvider::~CommunicationsClientProvider() {
  {
    const std::lock_guard lock(mutex_);
    closing_ = true;
  }
  changed_.notify_one();
  thread_.join();
}

void CommunicationsClientProvider::Connect() {
  {
    const std::lock_guard lock(mutex_);
    connected_ = true;
  }
  changed_.notify_one();
}

void CommunicationsClientProvider::Download(std::string source, std::string target_folder) {
  ++*unfinished_;
  {
    const std::lock_guard lock(mutex_);
    waiting_.push_back({std::move(source), std::move(target_folder)});
  }
  changed_.notify_one();
}

void CommunicationsClientProvider::Run() {
  for (;;) {
    std::unique_lock lock(mutex_);
    changed_.wait(lock, [this] { return closing_ || (connected_ && !waiting_.empty()); });
    if (closing_) return;
    const auto wanted = std::move(waiting_.front());
    waiting_.pop_front();
    lock.unlock();
    try {
      Copy(wanted);
      Notify(wanted.source, "SUCCESSFULL");
    } catch (const std::exception& failure) {
      Notify(wanted.source, failure.what());
    }
  }
}

void CommunicationsClientProvider::Copy(const Wanted& wanted) const {
  const auto source = LocalPath(wanted.source);
  const auto name = source.filename().string();
  // Names come from the catalogue: nothing but a file of the template folder is given out.
  if (name.empty() || name == "." || name == ".." ||
      source.parent_path().lexically_normal() != template_folder_) {
    throw Failure(Failure::Kind::kRefused,
                  "\"" + wanted.source + "\" is no file of the server's template folder.");
  }
  const auto found = FindFile(template_folder_, name);
  const auto target_folder = LocalPath(wanted.target_folder);
  platform::MakeFolder(target_folder);
  platform::CopyWholeFile(found, target_folder / name, check_);
}

void CommunicationsClientProvider::Notify(const std::string& source, const std::string& status) {
  auto message = "<COMMAND>FILEDOWNLOAD</COMMAND><STATUS>" + XmlEscaped(status) + "</STATUS><SOURCE>" +
                 XmlEscaped(source) + "</SOURCE>";
  events_.Post([client = std::weak_ptr(client_), unfinished = unfinished_, message = std::move(message)] {
    --*unfinished;
    if (const auto hearing = client.lock()) hearing->MessageReceived(message, "");
  });
}

}  // namespace server
