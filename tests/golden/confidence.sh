# A prediction: confidences in the B column, low at the ends and at residues 40 to 44. The title or a table says so.
atoms() {
    awk '{ b = NR < 9 || NR > 112 ? 30.5 : NR > 39 && NR < 45 ? 45 : 90
        printf "ATOM  %5d  CA  GLY A%4d    %8.3f%8.3f%8.3f  1.00%6.2f           C\n", NR, NR, $2, $3, $4, b * scale }' \
        scale="$1" trefoil.txt
}
model() {
    echo "$1"
    atoms "${2:-1}"
    echo END
}
columns() { cut -d, -f1,5,6,30-; }
model 'TITLE     ALPHAFOLD MONOMER V2.0 PREDICTION FOR A TREFOIL' >title.pdb
model 'REMARK   1 THE B COLUMN IS PLDDT' 0.01 >remark.pdb
model 'REMARK 200 STARTING MODEL: ALPHAFOLD' >silent.pdb
{
    echo 'EXPDTA    X-RAY DIFFRACTION'
    cat title.pdb
} >measured.pdb
{
    printf 'data_m\nloop_\n_ma_qa_metric.id\n_ma_qa_metric.name\n1 pLDDT\nloop_\n'
    printf '_atom_site.%s\n' label_atom_id label_asym_id label_seq_id Cartn_x Cartn_y Cartn_z B_iso_or_equiv
    atoms 1 | awk '/^ATOM/ { print $3, $5, $6, $7, $8, $9, substr($0, 61, 6) }'
    echo '#'
} >table.cif
loopwise survey --csv title.pdb remark.pdb silent.pdb measured.pdb table.cif | columns
loopwise survey --csv --confidence silent.pdb | columns
loopwise survey --csv --no-confidence title.pdb | columns
sed 's/ 45.00  / 900.0  /' title.pdb >strange.pdb
loopwise survey strange.pdb | grep -m1 confidence
loopwise survey --min-confidence 70 title.pdb | sed -n '/bead/,/verdict/p' | grep -v '#\|^ *[-+0-9b]'
loopwise survey --min-confidence 20 silent.pdb
loopwise survey --min-confidence 95 title.pdb
loopwise survey --first 10 --last 60 --json title.pdb | grep -o '"confidence":.*'
loopwise fingerprint --closures 20 --step 30 title.pdb
loopwise fingerprint --closures 20 --step 30 --csv title.pdb | sed -n '1,2p' | cut -d, -f8,25-
loopwise fingerprint --closures 20 --step 30 --json table.cif | grep -o '"confidence":[^x]*' | sed 's/}}.*"confidence"/}} ... "confidence"/'
for command in knot check; do
    loopwise $command title.pdb
    loopwise $command --csv table.cif | cut -d, -f1,3,10-
    loopwise $command --json title.pdb | grep -o '"confidence":.*'
done
