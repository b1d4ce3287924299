#!/usr/bin/env bash
# Configures and builds one of the project's build trees under build/.
#   native   portable core, tool and benchmarks (optimised)
#   asan     portable core and its tests with AddressSanitizer and UBSan
#   fuzz     libFuzzer targets (clang)
#   windows  the Windows programs, cross-built with MinGW-w64; heralder.exe
#            asks the tests' loopback server (127.0.0.1:47632) for its feed
#   run      heralder.exe and the autopilot alone, asking scripts/run.sh's
#            loopback server (127.0.0.1:47631)
#   windows-signed  heralder.exe of the test build with two throw-away public
#            keys built in (keys/ beside it), for the tests of signed documents
#   windows-https  heralder.exe asking https://localhost:47633, the tests' TLS server
#   release  heralder.exe, the tool and the manual as they ship (scripts/package.sh),
#            asking the publisher's own server
set -euo pipefail
root=$(cd "$(dirname "$0")/.." && pwd)
kind=${1:?usage: build.sh native|asan|fuzz|windows|windows-signed|windows-https|run|release}
targets=()
out="$root/build/$kind"

case "$kind" in
    native)  args=(-DCMAKE_BUILD_TYPE=Release -DHERALDER_TESTS=OFF) ;;
    asan)    args=(-DCMAKE_BUILD_TYPE=Debug -DHERALDER_SANITIZE=ON -DHERALDER_BENCH=OFF) ;;
    fuzz)    args=(-DCMAKE_BUILD_TYPE=RelWithDebInfo -DHERALDER_FUZZ=ON -DHERALDER_TESTS=OFF
                   -DHERALDER_BENCH=OFF -DCMAKE_C_COMPILER=clang -DCMAKE_CXX_COMPILER=clang++) ;;
    windows) args=(-DCMAKE_BUILD_TYPE=Release
                   -DCMAKE_TOOLCHAIN_FILE="$root/cmake/mingw-w64-x86_64.cmake"
                   -DHERALDER_BENCH=OFF -DHERALDER_SERVER_HOST=127.0.0.1:47632) ;;
    run)     args=(-DCMAKE_BUILD_TYPE=Release
                   -DCMAKE_TOOLCHAIN_FILE="$root/cmake/mingw-w64-x86_64.cmake"
                   -DHERALDER_BENCH=OFF -DHERALDER_SERVER_HOST=127.0.0.1:47631)
             targets=(--target heralder autopilot heralder-tool) ;;
    windows-signed)
             tool="$root/build/native/heralder-tool"
             [ -x "$tool" ] || "$0" native
             for k in first second; do
                 if [ ! -f "$out/keys/$k/feed-public.pem" ]; then
                     mkdir -p "$out/keys/$k" && "$tool" keygen "$out/keys/$k" >/dev/null
                 fi
             done
             args=(-DCMAKE_BUILD_TYPE=Release
                   -DCMAKE_TOOLCHAIN_FILE="$root/cmake/mingw-w64-x86_64.cmake"
                   -DHERALDER_BENCH=OFF -DHERALDER_SERVER_HOST=127.0.0.1:47632
                   "-DHERALDER_FEED_KEYS=$out/keys/first/feed-public.pem;$out/keys/second/feed-public.pem")
             targets=(--target heralder) ;;
    windows-https)
             args=(-DCMAKE_BUILD_TYPE=Release
                   -DCMAKE_TOOLCHAIN_FILE="$root/cmake/mingw-w64-x86_64.cmake"
                   -DHERALDER_BENCH=OFF -DHERALDER_SERVER_HOST=https://localhost:47633)
             targets=(--target heralder) ;;
    release) args=(-DCMAKE_BUILD_TYPE=Release
                   -DCMAKE_TOOLCHAIN_FILE="$root/cmake/mingw-w64-x86_64.cmake"
                   -DHERALDER_BENCH=OFF -DHERALDER_TESTS=OFF -UHERALDER_SERVER_HOST)
             targets=(--target heralder heralder-tool manual_pages) ;;
    *) echo "unknown build kind: $kind" >&2; exit 2 ;;
esac

# Keys are given for each build, never left over from an earlier one.
[ "$kind" = windows-signed ] || args+=(-UHERALDER_FEED_KEYS)

if command -v ccache >/dev/null; then
    # Work trees of the same project share their objects.
    export CCACHE_BASEDIR=${CCACHE_BASEDIR:-$(dirname "$root")}
    args+=(-DCMAKE_C_COMPILER_LAUNCHER=ccache -DCMAKE_CXX_COMPILER_LAUNCHER=ccache)
fi
cmake -S "$root" -B "$out" -G Ninja "${args[@]}" ${HERALDER_CMAKE_ARGS:-} >/dev/null
cmake --build "$out" -j "$(nproc)" ${targets[@]+"${targets[@]}"}
