// Every exported operation that computes or allocates, each as one step on the same values.
#pragma once

#include "libloopwise.h"

#include <span>
#include <string>

namespace operations {

/// What a step reads and changes.
struct Values {
    Chain chain;
    Structure structure;
    std::string text, file;
};

/// FNV-1a over the bits of results. Every not-a-number is the same one.
class Digest {
  public:
    void add(double number);
    void add(int number);
    void add(PointR3 point);
    void add(const Chain& chain);
    void add(const Structure& structure);
    void add(const std::string& text);
    std::uint64_t value() const { return hash_; }

  private:
    void add_bytes(const void* bytes, std::size_t size);
    std::uint64_t hash_ = 14695981039346656037U;
};

struct Operation {
    const char* name;
    bool draws; ///< from std::rand(), which threads share
    void (*run)(Values& values, Digest& results);
};

std::span<const Operation> all();

/// Runs the operation on a copy of the values and digests what it returned and left, and what std::rand()
/// gives next if it draws.
std::uint64_t digest(const Operation& operation, Values values);

/// Values that take the operations through their unusual ways too.
Values make_values(std::uint64_t seed, const std::string& file);

} // namespace operations
