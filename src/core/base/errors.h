// Errors of the computing core. Expected problems are Messages (messages.h);
// these types carry the unexpected ones, with the run-time error number the
// error form shows, up to the procedure boundary that reports them.
#pragma once

#include <stdexcept>
#include <string>
#include <string_view>

namespace ira {

// Run-time error numbers shown by the error form.
enum ErrorNumber : int {
  kErrOverflow = 6,
  kErrSubscript = 9,
  kErrDivisionByZero = 11,
  kErrTypeMismatch = 13,
  kErrBadFileName = 52,
  kErrFileNotFound = 53,
  kErrDiskFull = 61,
  kErrInputPastEnd = 62,
  kErrPermissionDenied = 70,
  kErrPathAccess = 75,
  kErrPathNotFound = 76,
  kErrInvalidProperty = 380,
  kErrPrinter = 482,
};

class Error : public std::runtime_error {
 public:
  Error(int number, const std::string& text) : std::runtime_error(text), m_number(number) {}
  int Number() const noexcept { return m_number; }

 private:
  int m_number;
};

class OverflowError : public Error {
 public:
  explicit OverflowError(std::string_view where)
      : Error(kErrOverflow, "Overflow in " + std::string(where)) {}
};

class DivisionError : public Error {
 public:
  explicit DivisionError(std::string_view where)
      : Error(kErrDivisionByZero, "Division by zero in " + std::string(where)) {}
};

class FileError : public Error {
 public:
  using Error::Error;
};

// Where unexpected errors go: the desktop shows the error form, batch mode
// prints them, tests record them.
class ErrorReport {
 public:
  virtual ~ErrorReport() = default;
  virtual void Report(int number, std::string_view text, std::string_view where) = 0;
};

// The program-wide error report (a silent default until one is installed).
ErrorReport& Errors();
// For the calling thread; nullptr restores the default.
void SetErrorReport(ErrorReport* report);

// Hands an exception caught at a procedure boundary to the error report.
void ReportUnexpected(std::string_view where, const std::exception& e);

}  // namespace ira
