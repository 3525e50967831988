#include "Operations.h"

#include <algorithm>
#include <filesystem>
#include <iterator>
#include <numeric>
#include <set>
#include <stdexcept>
#include <utility>

namespace Storm {

namespace fs = std::filesystem;

Operations::Operations(
    LibraryModel& library, DemoLibrary::Random& random, Toolbox::Callbacks callbacks,
    const std::vector<std::string>& only)
    : m_tools(library, random, std::move(callbacks)),
      m_bundleOperations(m_tools),
      m_folderOperations(m_tools),
      m_identityOperations(m_tools),
      m_decoyOperations(m_tools),
      m_rootOperations(m_tools) {
    for (auto&& group :
         {m_bundleOperations.all(), m_folderOperations.all(), m_identityOperations.all(),
          m_decoyOperations.all(), m_rootOperations.all()})
        m_operations.insert(m_operations.end(), group.begin(), group.end());
    if (!only.empty())
        choose(only);
}

void Operations::choose(const std::vector<std::string>& names) {
    std::set<std::string> known;
    for (const auto& operation : m_operations)
        known.insert(operation.name);
    for (const auto& name : names) {
        if (known.count(name) != 0)
            continue;
        std::string text = "No operation is called \"" + name + "\". There are:";
        for (const auto& each : known)
            text.append(" ").append(each);
        throw std::runtime_error(text);
    }
    std::erase_if(m_operations, [&](const Operation& operation) {
        return std::find(names.begin(), names.end(), operation.name) == names.end();
    });
}

void Operations::prepare() {
    constexpr int bundles = 10;
    const auto& library = m_tools.library();
    for (const auto& root : library.roots())
        fs::create_directories(root);
    fs::create_directories(library.outside());
    fs::create_directories(library.store());
    m_rootOperations.prepare();
    m_folderOperations.create();
    m_folderOperations.create();
    for (int i = 0; i < bundles; ++i)
        m_bundleOperations.create();
}

std::string Operations::doOne() {
    constexpr int mostDraws = 10'000;
    const int sum =
        std::accumulate(m_operations.begin(), m_operations.end(), 0, [](int all, const Operation& operation) {
            return all + operation.weight;
        });
    for (int draw = 0; draw < mostDraws; ++draw) {
        int drawn = m_tools.random().between(0, sum - 1);
        auto operation = m_operations.begin();
        for (; drawn >= operation->weight; ++operation)
            drawn -= operation->weight;
        // Not every operation finds what it needs.
        if (const auto done = operation->perform())
            return *done;
    }
    throw std::runtime_error("None of the operations finds what it needs");
}

} // namespace Storm
