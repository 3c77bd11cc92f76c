// What the library prints while an object of this class lives, stream by stream.
#pragma once

#include <iostream>
#include <sstream>
#include <string>

class Capture {
  public:
    Capture()
        : out_(std::cout.rdbuf(cout.rdbuf())), err_(std::cerr.rdbuf(cerr.rdbuf())),
          log_(std::clog.rdbuf(clog.rdbuf())) {}
    Capture(const Capture&) = delete;
    Capture& operator=(const Capture&) = delete;
    ~Capture() {
        std::cout.rdbuf(out_);
        std::cerr.rdbuf(err_);
        std::clog.rdbuf(log_);
    }

    std::ostringstream cout, cerr, clog;
    bool silent() const { return cout.str().empty() && cerr.str().empty() && clog.str().empty(); }

  private:
    std::streambuf *out_, *err_, *log_;
};
