# Completion of ptick-diff for bash.

_ptick_diff_words() {
  mapfile -t COMPREPLY < <(compgen -W "$1" -- "$2")
}

_ptick_diff() {
  local current=${COMP_WORDS[COMP_CWORD]} before=${COMP_WORDS[COMP_CWORD - 1]} i
  COMPREPLY=()
  for ((i = 1; i < COMP_CWORD; ++i)); do
    # Only profiles follow.
    [[ ${COMP_WORDS[i]} == -- ]] && return
  done
  # bash takes "--name=value" for three words.
  if [[ $current == = ]]; then
    current=''
  elif [[ $before == = ]]; then
    before=${COMP_WORDS[COMP_CWORD - 2]}
  fi
  case $before in
    -o | --output) ;;
    --by) _ptick_diff_words 'line program command subroutine counter' "$current" ;;
    --sort) _ptick_diff_words 'change relative old new name' "$current" ;;
    --color) _ptick_diff_words 'auto always never' "$current" ;;
    --top)
      compopt +o default 2>/dev/null
      _ptick_diff_words all "$current"
      ;;
    --fail-slower | --fail-slower-row) compopt +o default 2>/dev/null ;;
    --old-source | --new-source)
      compopt -o filenames +o default 2>/dev/null
      mapfile -t COMPREPLY < <(compgen -d -- "$current")
      ;;
    *)
      [[ $current == -?* || $current == - ]] || return
      mapfile -t COMPREPLY < <(compgen -W '--by= --sort= --top= --all --normalize --old-source= --new-source= --fail-slower=
        --fail-slower-row= --json --csv --vs --output= --quiet --color= --help --version -o -q -h -V' -- "$current")
      [[ ${#COMPREPLY[@]} -eq 1 && ${COMPREPLY[0]} == *= ]] && compopt -o nospace 2>/dev/null
      ;;
  esac
}

complete -o default -F _ptick_diff ptick-diff
