#!/usr/bin/env bash
# The console typing test with the X server's keymap set to the United Kingdom layout.
# Arguments: build directory, source directory.
exec bash "$(dirname "$0")/console_typing.sh" "$1" "$2" gb
