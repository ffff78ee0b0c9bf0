#!/usr/bin/env bash
# Prints the folder with the CMake packages of this system's Qt, whose tools a build for Windows runs.
dirname "$(find /usr/lib -maxdepth 4 -type d -path '*/cmake/Qt6' -print -quit)"
