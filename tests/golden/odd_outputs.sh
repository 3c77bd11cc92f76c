# Outputs that would destroy something, limits, and the texts and pictures of what is odd.
try() { loopwise survey --method outside "$@"; echo "-> $?"; }
exec 2>&1
cp odd/pdb_plain.pdb mine.pdb && ln -s mine.pdb link.svg && ln mine.pdb hard.svg
try --svg mine.pdb mine.pdb
try --svg link.svg mine.pdb
try --svg hard.svg trefoil.txt mine.pdb
cp mine.pdb other.pdb
try --each mine.pdb mine.pdb
try --svg - mine.pdb
try --each new.svg --svg new.svg mine.pdb
try --svg other.pdb mine.pdb
loopwise survey --svg out.svg mine.pdb >>out.svg
: >out.svg
loopwise survey --svg out.svg mine.pdb >>out.svg
cat mine.pdb >>all.txt
loopwise survey all.txt >>all.txt
cmp mine.pdb odd/pdb_plain.pdb && cmp other.pdb odd/pdb_plain.pdb && cmp all.txt odd/pdb_plain.pdb && echo all as before
loopwise survey --chain= mine.pdb
loopwise survey --chain A, mine.pdb
loopwise survey --chain '' mine.pdb
loopwise survey --model none mine.pdb
loopwise survey --atom '' mine.pdb
loopwise survey --closed --method outside mine.pdb
loopwise survey - - <mine.pdb
{
    for chain in a b c d e f g h; do
        for number in 1 2 3 4 5 6 7 8; do
            sed "s/ALA A\( *\)\([0-9]\)/ALA$number$chain\1\2/; /END/d" mine.pdb
        done
    done
    echo END
} >many.pdb
loopwise survey --structure --method point --seed 1 many.pdb
loopwise survey --structure --count 1 --seed 1 many.pdb | sed -n '1,4p'
loopwise survey odd/pdb_gaps.pdb odd/pdb_short_bonds.pdb odd/text_ring.txt odd/pdb_ligand_without_ter.pdb
loopwise survey --json --model all odd/pdb_models.pdb odd/pdb_gaps.pdb odd/text_title.txt
loopwise survey --svg gaps.svg odd/pdb_gaps.pdb >/dev/null && grep -c 'stroke-dasharray="3 4"' gaps.svg
loopwise survey --svg ring.svg odd/text_ring.txt >/dev/null && grep -c 'stroke-dasharray' ring.svg
loopwise survey --structure --count 5 --seed 1 --svg two.svg odd/pdb_two_chains.pdb >/dev/null && grep '<text' two.svg
