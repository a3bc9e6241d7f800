# Plugged and unplugged two hundred times: nothing is left behind, and nothing grows.
. /t/cases/cycles.sh
come_and_go 100
