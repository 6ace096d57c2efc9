# Completion of ptick-annotate for bash.

_ptick_annotate() {
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
    -f | --source)
      compopt -o filenames 2>/dev/null
      mapfile -t COMPREPLY < <(compgen -d -- "$current")
      ;;
    --color) mapfile -t COMPREPLY < <(compgen -W 'auto always never' -- "$current") ;;
    -c | --context | -p | --program) compopt +o default 2>/dev/null ;;
    *)
      [[ $current == -?* || $current == - ]] || return
      mapfile -t COMPREPLY < <(compgen -W '--source= --context= --all --program=
        --output= --quiet --color= --help --version -f -c -a -p -o -q -h -V' -- "$current")
      [[ ${#COMPREPLY[@]} -eq 1 && ${COMPREPLY[0]} == *= ]] && compopt -o nospace 2>/dev/null
      ;;
  esac
}

complete -o default -F _ptick_annotate ptick-annotate
