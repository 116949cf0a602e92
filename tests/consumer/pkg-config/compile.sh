#!/bin/sh
# Compiles a program as a makefile would: a compiler, and what pkg-config says of a package.
#   CXX= [STATIC=--static] compile.sh PROGRAM PACKAGE SOURCE-OR-OPTION...
# The flags are quoted for a shell, because the installation may be in a folder with a blank in its name.
set -eu
program=$1 package=$2
shift 2
compilerFlags=$(pkg-config ${STATIC-} --cflags "$package")
linkerFlags="$(pkg-config ${STATIC-} --libs "$package") -Wl,-rpath,$(pkg-config --variable=libdir RoamscanDataStructures)"
eval "exec \"\$CXX\" -std=c++20 -Wall -Werror $compilerFlags \"\$@\" -o \"\$program\" $linkerFlags"
