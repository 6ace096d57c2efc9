# Completion of ptick-merge for bash.

_ptick_merge() {
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
    -o | --output | --files-from | --files0-from) ;;
    --color) mapfile -t COMPREPLY < <(compgen -W 'auto always never' -- "$current") ;;
    --program) compopt +o default 2>/dev/null ;;
    *)
      [[ $current == -?* || $current == - ]] || return
      mapfile -t COMPREPLY < <(compgen -W '--files-from= --files0-from= --keep-going --program=
        --output= --quiet --color= --help --version -k -o -q -h -V' -- "$current")
      [[ ${#COMPREPLY[@]} -eq 1 && ${COMPREPLY[0]} == *= ]] && compopt -o nospace 2>/dev/null
      ;;
  esac
}

complete -o default -F _ptick_merge ptick-merge
