// The exception classes of the model and of files. Each carries the text that the user reads; windows catch
// the base class, show the text and leave the edited value as it was.
#pragma once

#include "support/export.h"

#include <stdexcept>
#include <string>

namespace lumoplot {

/// Base of every exception that the system throws on its own account.
class ELumoError : public std::runtime_error {
public:
    using std::runtime_error::runtime_error;
};

/// A text that holds no number: "'TEXT' is not a valid floating point value" (or "… integer value").
class EConvertError : public ELumoError {
public:
    using ELumoError::ELumoError;
};

/// A sectioned stream that breaks its grammar: "reading error 1", "conversion error", "Stream read Error", …
class EStreamError : public ELumoError {
public:
    using ELumoError::ELumoError;
};

/// A graph file that is none, or of an unknown version.
class EGraphFileError : public ELumoError {
public:
    using ELumoError::ELumoError;
};

/// A file that cannot be opened, read or written; the text names it.
class EFileError : public ELumoError {
public:
    using ELumoError::ELumoError;
};

/// A standard error of Y that can be none.
class EYError : public ELumoError {
public:
    using ELumoError::ELumoError;
};

/// An axis whose range is inconsistent.
class EScaleError : public ELumoError {
public:
    using ELumoError::ELumoError;
};

} // namespace lumoplot
