#!/usr/bin/env bash
# Prints this release's version as app/release.h writes it ("2023.12.30"), or with "date" its date
# ("2023 12 30"), through the C preprocessor so that the header stays the version's one home.
set -euo pipefail
root=$(cd "$(dirname "$0")/.." && pwd)
case ${1:-} in
  date) what='VRL_RELEASE_YEAR VRL_RELEASE_MONTH VRL_RELEASE_DAY' ;;
  *)    what=VRL_VERSION_TEXT ;;
esac
echo "$what" | cpp -P -include "$root/app/release.h" - | sed -E '/^[[:space:]]*$/d; s/" "//g; s/"//g'
