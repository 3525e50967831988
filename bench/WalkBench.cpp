// walk_bench ROOT: a walk over a library and nothing else, to be timed as a whole process.

#include "monitor/FolderWalk.h"

#include <cstdio>

int main(int argc, char** argv) {
    if (argc != 2)
        return 2;
    int bundles = 0;
    const Stemhaven::FolderWalk walk(
        {[&](const QString&) { ++bundles; }, [](const QString&, const QString&) {},
         [] {
             return false;
         }});
    walk.walk(QString::fromLocal8Bit(argv[1]));
    std::printf("%d\n", bundles);
    return 0;
}
