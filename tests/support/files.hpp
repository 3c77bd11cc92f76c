// A file in memory that has a name, gone with the object.
#pragma once

#include <sys/mman.h>
#include <unistd.h>

#include <fstream>
#include <string>

class MemoryFile {
  public:
    explicit MemoryFile(const std::string& content = "") { std::ofstream(name_, std::ios::binary) << content; }
    MemoryFile(const MemoryFile&) = delete;
    MemoryFile& operator=(const MemoryFile&) = delete;
    ~MemoryFile() { ::close(descriptor_); }
    char* name() { return name_.data(); }
    std::string content() const {
        std::ifstream file(name_, std::ios::binary);
        return {std::istreambuf_iterator<char>(file), {}};
    }

  private:
    int descriptor_ = ::memfd_create("chain", 0);
    std::string name_ = "/proc/self/fd/" + std::to_string(descriptor_);
};
