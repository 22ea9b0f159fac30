// The result of an operation that can fail with a reason: either success, or an error number
// and a readable message that names what failed and where. Modules hand it across their
// boundaries inside the project (loader, engine, profile readers and writers, file helpers);
// docs/errors.md says which conventions remain and why.
//
// Success holds nothing and costs a null pointer; a failure holds its number and message in
// one shared block, so copies are cheap and a status can be passed on as it came.
#pragma once

#include <memory>
#include <string>
#include <utility>

class [[nodiscard]] ozStatus {
public:
    // Success.
    ozStatus() = default;
    static ozStatus Ok() { return ozStatus(); }
    // A failure with `message` and the number the module reports it under (its own error
    // number, errno or a Win32 code, as the function's contract says; 0 when there is none).
    // `line` and `column` (1-based; 0 unknown) place the failure in a text being read.
    static ozStatus Error(std::string message, int code = 0, unsigned line = 0, unsigned column = 0)
    {
        ozStatus status;
        status.m_failure =
            std::make_shared<const Failure>(Failure{code, line, column, std::move(message)});
        return status;
    }

    bool IsOk() const { return m_failure == nullptr; }
    explicit operator bool() const { return IsOk(); }
    // The number, message and place of a failure; 0, empty and 0 for success.
    int Code() const { return m_failure ? m_failure->code : 0; }
    const std::string& Message() const { return m_failure ? m_failure->message : NoMessage(); }
    unsigned Line() const { return m_failure ? m_failure->line : 0; }
    unsigned Column() const { return m_failure ? m_failure->column : 0; }

    // The same failure with `prefix` put before its message (e.g. the name of the file it
    // concerns); success stays success.
    ozStatus Prefixed(const std::string& prefix) const
    {
        return IsOk() ? *this : Error(prefix + Message(), Code(), Line(), Column());
    }

private:
    struct Failure {
        int code;
        unsigned line;
        unsigned column;
        std::string message;
    };
    static const std::string& NoMessage()
    {
        static const std::string none;
        return none;
    }

    std::shared_ptr<const Failure> m_failure;
};
