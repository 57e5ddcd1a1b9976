# Sourced from the top of the tree: the samples and test descriptions, split
# into valid_descriptions and invalid_descriptions by the patterns in
# tests/lint/invalid-descriptions.
valid_descriptions=(); invalid_descriptions=()
mapfile -t invalid_patterns < <(grep -v -e '^#' -e '^[[:space:]]*$' tests/lint/invalid-descriptions)
while IFS= read -r file; do
    invalid=0
    for pattern in "${invalid_patterns[@]}"; do
        # shellcheck disable=SC2053
        [[ $file == $pattern ]] && invalid=1
    done
    if [ "$invalid" -eq 1 ]; then invalid_descriptions+=("$file"); else valid_descriptions+=("$file"); fi
done < <({ ls samples/*.xml; find tests/data -name '*.xml'; } | sort)
