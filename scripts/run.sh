#!/usr/bin/env bash
# The main job on the bundled sample: builds the program and reads
# examples/update.txt exactly as the agent reads a local update document,
# printing the items it finds.
set -euo pipefail
root=$(cd "$(dirname "$0")/.." && pwd)
"$root/scripts/setup.sh"
"$root/scripts/build.sh" native >/dev/null
"$root/build/native/heralder-tool" parse "$root/examples/update.txt"
