# Completion of ptick-fleet for bash.

_ptick_fleet() {
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
    -o | --files-from | --files0-from | --ptick-merge | --output) ;;
    --work-dir)
      compopt -o filenames 2>/dev/null
      mapfile -t COMPREPLY < <(compgen -d -- "$current")
      ;;
    --color) mapfile -t COMPREPLY < <(compgen -W 'auto always never' -- "$current") ;;
    --scheduler | --workers | --group-files | --group-bytes | --fan-in | --patience | --worker-wait)
      compopt +o default 2>/dev/null
      ;;
    *)
      if [[ $current == -?* || $current == - ]]; then
        mapfile -t COMPREPLY < <(compgen -W '--files-from= --files0-from= --keep-going --scheduler=
          --workers= --work-dir= --group-files= --group-bytes= --fan-in= --patience=
          --worker-wait= --ptick-merge= --output= --quiet --color= --help --version
          -k -o -q -h -V' -- "$current")
        [[ ${#COMPREPLY[@]} -eq 1 && ${COMPREPLY[0]} == *= ]] && compopt -o nospace 2>/dev/null
      elif ((COMP_CWORD == 1)); then
        mapfile -t COMPREPLY < <(compgen -W merge -- "$current")
      fi
      ;;
  esac
}

complete -o default -F _ptick_fleet ptick-fleet
