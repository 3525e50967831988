#pragma once

#include <QString>

#include <functional>
#include <memory>
#include <optional>
#include <type_traits>
#include <utility>

namespace Stemhaven {

/// Calls that look at a file system which may not answer, because it is reached over a network or through
/// another process. Such a call cannot be interrupted; it can only be left behind. Safe from any thread.
class RemoteCalls {
public:
    /// What call, which looks at path or into it, returns. On a local file system it runs on this thread. On
    /// a remote one it runs on a thread of its own, and is given up after 2 s: then nothing is returned, and
    /// the call may end later, so it must own all that it uses. While a mount owes an answer, every other
    /// call to it is given up at once. What call throws on another thread counts as no answer.
    template <typename Call>
    static std::optional<std::invoke_result_t<Call>> run(const QString& path, Call call) {
        using Result = std::invoke_result_t<Call>;
        const QString mount = mountOf(path);
        if (mount.isEmpty())
            return call();
        const auto result = std::make_shared<std::optional<Result>>();
        if (!finishes(mount, [result, call = std::move(call)]() mutable { result->emplace(call()); }))
            return std::nullopt;
        return std::move(*result);
    }

    /// Where the remote file system that a path leads to is mounted, empty for a local one. Does not look at
    /// a remote file system. Cheap for a path that was asked for before.
    static QString mountOf(const QString& path);

private:
    static bool finishes(const QString& mount, const std::function<void()>& call);
};

/// Whether there is anything at path; false where a remote file system does not answer.
bool pathExists(const QString& path);

} // namespace Stemhaven
