// The exceptions of the string layer. They stay inside it: the operations that meet them say what they do instead.
#pragma once

#include <exception>

namespace connectdialog {

/// Malformed UTF-8, or a high surrogate without its low one.
class IllegalSequence : public std::exception {
  public:
    const char* what() const noexcept override { return "IllegalSequence"; }
};

/// A message template with an insert that has no argument, or one that does not fit its argument.
class InvalidParameter : public std::exception {
  public:
    const char* what() const noexcept override { return "InvalidParameter"; }
};

/// No message of that code, or no template at all.
class MessageNotFound : public std::exception {
  public:
    const char* what() const noexcept override { return "MessageNotFound"; }
};

}  // namespace connectdialog
