# Completion of kestrel's command line for bash. It stands alone: bash-completion is not needed.

# Completes file names as they are, with blanks and all.
_kestrel_files() {
  compopt -o filenames 2>/dev/null
  mapfile -t COMPREPLY < <(compgen -f -- "$1")
}

_kestrel_words() {
  mapfile -t COMPREPLY < <(compgen -W "$1" -- "$2")
}

# Completes the value of an option, with the formats of its command; fails where the word is no such value.
_kestrel_value() {
  case $1 in
    --layout-file | --streams-from | --files-from | -o | --output) _kestrel_files "$2" ;;
    --code) _kestrel_words "$(kestrel codes 2>/dev/null | awk 'NR > 1 { print $1 }')" "$2" ;;
    --item) _kestrel_words "$(kestrel catalogue 2>/dev/null | awk 'NR > 1 { print $1 }')" "$2" ;;
    --format) _kestrel_words "$3" "$2" ;;
    --layout | --order | --timeout | --memory-limit | --jobs) COMPREPLY=() ;;
    *) return 1 ;;
  esac
}

_kestrel() {
  local word=${COMP_WORDS[COMP_CWORD]} before=${COMP_WORDS[COMP_CWORD - 1]}
  local command=${COMP_WORDS[1]} expected own formats='text json'
  expected='--layout --layout-file --item --code --order --no-label-check --report-all --strict
    --timeout --memory-limit --require-isolation'
  case $command in
    inspect) own="--streams-from --format -o --output --force $expected" formats+=' html' ;;
    scan) own="--files-from -0 --null -o --output --force --resume --recheck --jobs -q --quiet $expected" ;;
    report) own='--format --files-from -0 --null -o --output --force' formats='html text jsonl' ;;
    catalogue | codes) own='--format' ;;
  esac
  COMPREPLY=()
  if ((COMP_CWORD == 1)); then
    _kestrel_words 'inspect scan report catalogue codes explain -h --help --version' "$word"
  elif _kestrel_value "$before" "$word" "$formats"; then
    :
  elif [[ $word == -* ]]; then
    _kestrel_words "$own -h --help" "$word"
  elif [[ $command == inspect || $command == scan || $command == report ]]; then
    _kestrel_files "$word"
  fi
}

complete -F _kestrel kestrel
