# Three zeros that are a link: the Borromean rings, and a Whitehead link beside a ring. A link whose name is not proven.
for file in borromean.pdb whitehead.pdb ten_crossings.pdb; do
  loopwise knot --link "$file" | sed -n '/chains A/,$p'
  loopwise knot --link --json "$file" | grep -o '"chains".*'
  loopwise knot --link --csv "$file" | grep A+B
  loopwise survey --closed --structure "$file" | sed -n '/all chains together/,/down to three/p'
  loopwise survey --closed --structure --csv "$file" | cut -d , -f 3-5,13-16,23- | grep -v component
  loopwise survey --closed --structure --json "$file" | grep -o '"links".*' | sed 's/,"down_to_three.*//'
  loopwise survey --closed --structure --svg links.svg "$file" >/dev/null && grep -o 'chains A[^<]*closures' links.svg
done
# Rings of chain text with a blank line between.
for file in text_two_rings.txt text_two_rings_with_ids.txt text_ids_go_on.txt; do
  loopwise knot --link odd/$file | grep -v polynomial
done
loopwise check --chain 2 odd/text_two_rings.txt
