#pragma once

#include <string>

#include "platform/files.h"

namespace orvane::fuzz {

/// A file with that content.
class ContentFile final : public File {
 public:
  explicit ContentFile(std::string itsContent = "") : content(std::move(itsContent)) {}

  std::string Read(std::uint64_t offset, std::size_t size) override {
    return offset < content.size() ? content.substr(offset, size) : "";
  }
  std::uint64_t Size() override { return content.size(); }

  std::string content;
};

}  // namespace orvane::fuzz
