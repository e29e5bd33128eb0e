#!/bin/sh
# Starts Vantreo from any folder. The program finds its tools by paths relative to the current folder,
# so it is started in its own folder: no file in the caller's folder is ever run as a tool.
set -eu
script=$0
if [ -L "$script" ]; then script=$(readlink -f -- "$script"); fi
case $script in /*) ;; *) script=./$script ;; esac
cd -P -- "${script%/*}/.."
exec ./vantreo "$@"
