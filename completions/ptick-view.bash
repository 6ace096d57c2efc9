# Completion of ptick-view for bash.

_ptick_view() {
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
    -o | --output | --baseline) ;;
    -f | --source)
      mapfile -t COMPREPLY < <(compgen -d -- "$current")
      compopt -o filenames 2>/dev/null
      ;;
    --color) mapfile -t COMPREPLY < <(compgen -W 'auto always never' -- "$current") ;;
    *)
      [[ $current == -?* || $current == - ]] || return
      mapfile -t COMPREPLY < <(compgen -W '--baseline= --open --source= --output= --quiet --color= --help
        --version -f -o -q -h -V' -- "$current")
      [[ ${#COMPREPLY[@]} -eq 1 && ${COMPREPLY[0]} == *= ]] && compopt -o nospace 2>/dev/null
      ;;
  esac
}

complete -o default -F _ptick_view ptick-view
