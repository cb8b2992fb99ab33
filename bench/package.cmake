# Packages and the information file, beside the platform's own functions and other archivers.
mxov_bench(package_bench
    SOURCES package_bench.cpp PackageFolder.cpp PackagePeers.cpp
    LIBRARIES mxovshare_core cabinet)
