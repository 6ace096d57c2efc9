# Completion of ptick for bash.

# Sets `letters` to the option letters of an argument up to the first that takes a name, and `name` to
# that letter; both are empty for an argument that is no option.
_ptick_divide() {
  letters='' name=''
  [[ $1 == -* ]] || return 0
  letters=${1%%[fFk]*}
  name=${1:${#letters}:1}
  letters+=$name
}

# Sets `name` to the letter whose name the word at the cursor is, when that is a word of its own.
_ptick_name_before() {
  local i letters taken=''
  for ((i = 1; i < COMP_CWORD; ++i)); do
    if [[ $taken ]]; then
      taken=''
      continue
    fi
    _ptick_divide "${COMP_WORDS[i]}"
    [[ $letters == "${COMP_WORDS[i]}" ]] && taken=$name
  done
  name=$taken
}

# Offers the files whose names begin with $1, after the letter f directories only. $2 are the option
# letters in the same word: with them bash takes no word for a directory, so it gets its slash here,
# and no blank.
_ptick_files() {
  local kind=-f path
  [[ $name == f ]] && kind=-d
  compopt -o filenames 2>/dev/null
  while IFS= read -r path; do
    [[ $2 && -d $path ]] && path+=/
    COMPREPLY+=("$2$path")
  done < <(compgen "$kind" -- "$1")
  if [[ $2 && ${#COMPREPLY[@]} -eq 1 && ${COMPREPLY[0]} == */ ]]; then
    compopt -o nospace 2>/dev/null
  fi
}

# Offers the words of `-j ON|OFF portnumber | % {filename options}`.
_ptick_monitor() {
  case $COMP_CWORD in
    2) mapfile -t COMPREPLY < <(compgen -W 'ON OFF' -- "$1") ;;
    3) mapfile -t COMPREPLY < <(compgen -W '%' -- "$1") ;;
    4) _ptick_files "$1" '' ;;
  esac
}

_ptick() {
  local current=${COMP_WORDS[COMP_CWORD]} first=${COMP_WORDS[1]} letters name
  COMPREPLY=()
  # A port or a range of ports: commands for the processes there follow.
  if ((COMP_CWORD > 1)) && [[ $first =~ ^[0-9]+(-[0-9]+)?$ ]]; then
    return
  fi
  _ptick_divide "$first"
  if ((COMP_CWORD > 1)) && [[ $letters == *j* ]]; then
    name=''
    _ptick_monitor "$current"
    return
  fi
  _ptick_name_before
  if [[ $name || $current != -* ]]; then
    _ptick_files "$current" ''
    return
  fi
  _ptick_divide "$current"
  if [[ $current == - ]]; then
    mapfile -t COMPREPLY < <(compgen -W '-a -j -f -F -i -k -n -o -p -s -t -u -v -A -h' -- "$current")
  elif [[ $name ]]; then
    current=${current:${#letters}}
    # bash replaces what follows an open quotation mark, the letters before it stay.
    [[ $current == [\"\']* && $current != [\"\']*[\"\']* ]] && letters=''
    _ptick_files "$current" "$letters"
  else
    COMPREPLY=("$current")
  fi
}

complete -F _ptick ptick
