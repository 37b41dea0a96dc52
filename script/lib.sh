# What every script begins with, by `. "$(dirname "$0")/lib.sh"`: -h and --help are answered with
# the script's own first lines, before anything is touched.
set -euo pipefail

usage=$(awk 'NR > 1 { if (!/^#/) exit; sub(/^# ?/, ""); print }' "$0")
for argument in "$@"; do
  case $argument in
    -h | --help)
      printf '%s\n' "$usage"
      exit
      ;;
  esac
done

# For arguments that the script does not take.
refuse() {
  printf '%s\n' "$usage" >&2
  exit 2
}

# need_writable FOLDER: ends here, saying what to do, when nothing can be put into the folder.
need_writable() {
  local folder=$1
  until [[ -e $folder ]]; do folder=$(dirname "$folder"); done
  [[ -w $folder ]] && return
  echo "${0##*/}: $1 cannot be written. Clone Keyrow to a folder of your own, and build there." >&2
  exit 1
}
