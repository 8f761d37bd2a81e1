# bash completion for quillon-cli: commands, options, kinds, port devices and project files.

_quillon_cli() {
  local cur prev words cword
  _init_completion || return

  local commands="check resave identify image print download upload logger history restore"
  local link="--port --yes --reply-timeout --max-time --log"
  local command="" i
  for ((i = 1; i < cword; i++)); do
    case "${words[i]}" in
      --lang) ((i++)) ;;
      -*) ;;
      *) command="${words[i]}"; break ;;
    esac
  done

  case "$prev" in
    --lang) COMPREPLY=($(compgen -W "en de" -- "$cur")); return ;;
    --kind) COMPREPLY=($(compgen -W "M T P Y all" -- "$cur")); return ;;
    --port)
      local ports=(/dev/ttyS* /dev/ttyUSB* /dev/ttyACM* /dev/serial/by-id/*)
      COMPREPLY=($(compgen -W "${ports[*]} $(seq 1 16)" -- "$cur"))
      return ;;
    --reply-timeout | --max-time | --memo) return ;;
    -o | --output | --into) _filedir; return ;;
  esac

  if [[ -z "$command" ]]; then
    if [[ "$cur" == -* ]]; then
      COMPREPLY=($(compgen -W "--lang --help --version" -- "$cur"))
    else
      COMPREPLY=($(compgen -W "$commands" -- "$cur"))
    fi
    return
  fi

  local options="--lang --help"
  case "$command" in
    identify) options+=" $link" ;;
    image) options+=" -o --identifier" ;;
    print) options+=" -o --memo" ;;
    download) options+=" $link --kind" ;;
    upload) options+=" $link --kind --into --fragments -o" ;;
    logger) options+=" $link --fragments -o" ;;
  esac
  if [[ "$cur" == --log=* ]]; then
    cur=${cur#--log=}
    _filedir
  elif [[ "$cur" == -* ]]; then
    COMPREPLY=($(compgen -W "$options" -- "$cur"))
  elif [[ "$command" == image && $cword -eq $((i + 1)) ]]; then
    COMPREPLY=($(compgen -W "M T P Y" -- "$cur"))
  else
    _filedir '@(EAY|eay)'
  fi
}
complete -F _quillon_cli quillon-cli
