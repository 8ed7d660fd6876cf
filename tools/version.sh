#!/usr/bin/env bash
# SPDX-FileCopyrightText: the pvItems32 authors
# SPDX-License-Identifier: MIT

# Source this file in the folder of the project: gives version, that of the library, and of what is packed
# of it the folder, the name, and the folder of the contents: package_output, package_name, package_root.

version=$(sed -n 's/^project(pvItems32 VERSION \([0-9.]*\).*/\1/p' CMakeLists.txt)
package_output=build/package
package_name=pvItems32-$version
package_root=$package_output/$package_name
