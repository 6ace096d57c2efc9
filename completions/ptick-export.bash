# Completion of ptick-export for bash.

_ptick_export() {
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
      mapfile -t COMPREPLY < <(compgen -d -- "$current")
      compopt -o filenames 2>/dev/null
      ;;
    -t | --to)
      mapfile -t COMPREPLY < <(compgen -W 'json csv callgrind pprof speedscope trace folded' -- "$current")
      ;;
    --table)
      mapfile -t COMPREPLY < <(compgen -W 'lines programs commands subroutines objects inputs
        counters' -- "$current")
      ;;
    --color) mapfile -t COMPREPLY < <(compgen -W 'auto always never' -- "$current") ;;
    *)
      [[ $current == -?* || $current == - ]] || return
      mapfile -t COMPREPLY < <(compgen -W '--to= --table= --source= --output= --quiet --color= --help
        --version -t -f -o -q -h -V' -- "$current")
      [[ ${#COMPREPLY[@]} -eq 1 && ${COMPREPLY[0]} == *= ]] && compopt -o nospace 2>/dev/null
      ;;
  esac
}

complete -o default -F _ptick_export ptick-export
