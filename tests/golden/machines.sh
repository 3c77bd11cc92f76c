# Reports of knot and check as JSON and CSV, and what an interrupted survey leaves of them.
head -3 trefoil.txt >three.txt
loopwise knot --json --open 399 trefoil.txt three.txt
echo "-> $?"
loopwise knot --csv --open 0 trefoil.txt three.txt odd/text_title.txt odd/pdb_gaps.pdb
loopwise knot --open 400 trefoil.txt
loopwise knot --link odd/pdb_rings.pdb
loopwise knot --link --json odd/pdb_rings.pdb
loopwise knot --link --csv odd/pdb_rings.pdb odd/pdb_two_chains.pdb
# Bonds of 2.95 as in cis peptides, and of 2.5.
awk '{ x += NR == 5 ? 2.95 : NR == 9 ? 2.5 : 3.8; print NR, x, NR % 2, 0 }' three.txt odd/text_ring.txt >cis.txt
for format in '' --json --csv; do
    loopwise check $format cis.txt odd/pdb_gaps.pdb odd/pdb_models.pdb trefoil.txt
    echo "-> $?"
done
sed 60d trefoil.txt | loopwise check -
loopwise check trefoil.txt
echo "-> $?"
head -7 cis.txt | loopwise check -
echo "-> $?"
for format in --json --csv; do
    loopwise survey $format --method point --seed 1 --count 100000000 trefoil.txt >report &
    sleep 1
    kill -INT $!
    wait $!
    echo "-> $?"
    cat report
done
