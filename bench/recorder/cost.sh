#!/bin/sh
# usage: cost.sh BUILD-FOLDER [--seconds N] [--idle-seconds N]
# The recorder's cost beside its bounds; exit status 1 when one is exceeded, 77 where namespaces are not allowed.
set -eu
here=$(dirname "$(readlink -f "$0")")
build=$(readlink -f "$1")
shift
export NETINFO_BIN_DIR="$build/bin" NETINFO_BUILD_DIR="$build" LC_ALL=C.UTF-8
exec "$here/../../tests/system/recorder/in-namespaces" /usr/bin/python3 -B "$here/cost.py" "$@"
