// walk_bench ROOT: a walk over a library and nothing else, to be timed as a whole process.

#include "platform/TreeWalk.h"
#include "project/BundleSuffixes.h"

#include <cstdio>

int main(int argc, char** argv) {
    if (argc != 2)
        return 2;
    int bundles = 0;
    Stemhaven::TreeWalk walk;
    walk.onBundle = [&](const std::string&) {
        ++bundles;
    };
    walk.isStopped = [] {
        return false;
    };
    walk.walk(argv[1], Stemhaven::BundleNames(Stemhaven::bundleSuffixes()));
    std::printf("%d\n", bundles);
    return 0;
}
