#!/usr/bin/env bash
# SPDX-FileCopyrightText: the pvItems32 authors
# SPDX-License-Identifier: MIT

# Signs programs, libraries and MSI packages in place, when PV_CERTIFICATE names a PKCS #12 file; the
# password is in PV_CERTIFICATE_PASSWORD, a service for time stamps in PV_TIMESTAMP_URL. Else does nothing.
# Usage: tools/sign.sh <files...>
set -euo pipefail

[ -n "${PV_CERTIFICATE:-}" ] || exit 0
password=$(mktemp)
trap 'rm -f "$password"' EXIT
# Arguments of programs can be seen by everybody.
printf '%s' "${PV_CERTIFICATE_PASSWORD:-}" >"$password"

for file in "$@"; do
  osslsigncode sign -pkcs12 "$PV_CERTIFICATE" -readpass "$password" -h sha256 -n pvItems32 \
    ${PV_TIMESTAMP_URL:+-ts "$PV_TIMESTAMP_URL"} -in "$file" -out "$file.signed" >/dev/null
  mv "$file.signed" "$file"
done
