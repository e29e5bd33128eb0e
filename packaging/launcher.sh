#!/bin/sh
# Starts Vantreo from any folder. The program finds its tools by paths relative to the folder it
# runs in, so it is started in its own: what lies in the caller's folder is never run as a tool.
set -eu
script=$0
if [ -L "$script" ]; then script=$(readlink -f -- "$script"); fi
case $script in /*) ;; *) script=./$script ;; esac
cd -P -- "${script%/*}/.."
exec ./vantreo "$@"
