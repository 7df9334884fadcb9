<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<TS version="2.1">
<!-- The Japanese text. The language attribute is missing on purpose, so that
     the compiled table contains only hashes and messages. A finished message
     with an empty translation shows its source text; lrelease would omit an
     unfinished one. This file is edited by hand: lupdate would mark texts that
     no source uses any more as vanished, and lrelease would omit them. -->
<context>
    <name>FourPs</name>
    <message>
        <source>Frame</source>
        <translation></translation>
    </message>
    <message>
        <source>  Non Equiv. Meth.</source>
        <translation>  非等価法</translation>
    </message>
    <message>
        <source>%1</source>
        <translation></translation>
    </message>
    <message>
        <source>, Valence = %1, Base = %2</source>
        <extracomment>Base: constant term of the linear combination fit.</extracomment>
        <translation>, 価数 = %1, 定数項 = %2</translation>
    </message>
    <message>
        <source>, Valence = %1, t = %2</source>
        <extracomment>t: sum of the edge jumps that the references contribute.</extracomment>
        <translation>, 価数 = %1, t = %2</translation>
    </message>
    <message>
        <source>-0.2</source>
        <translation></translation>
    </message>
    <message>
        <source>-50</source>
        <translation></translation>
    </message>
    <message>
        <source>1.2</source>
        <translation></translation>
    </message>
    <message>
        <source>1.5</source>
        <translation></translation>
    </message>
    <message>
        <source>100</source>
        <translation></translation>
    </message>
    <message>
        <source>3.5</source>
        <translation></translation>
    </message>
    <message>
        <source>3ps: a = %1, Valence = %2</source>
        <translation>3点法: a = %1, 価数 = %2</translation>
    </message>
    <message>
        <source>4 Points Meth.</source>
        <translation>4点法</translation>
    </message>
    <message>
        <source>4 points.</source>
        <extracomment>No source uses this text any more; it stays in the table.</extracomment>
        <translation>4点</translation>
    </message>
    <message>
        <source>4ps</source>
        <extracomment>No source uses this text any more; it stays in the table.</extracomment>
        <translation>4点</translation>
    </message>
    <message>
        <source>4ps2: a = %1, Valence = %2, t/ts = %3</source>
        <extracomment>Result of the least-squares form. a: fraction of the first reference.</extracomment>
        <translation>4点法(最小二乗): a = %1, 価数 = %2, t/ts = %3</translation>
    </message>
    <message>
        <source>51</source>
        <translation></translation>
    </message>
    <message>
        <source>8350</source>
        <translation></translation>
    </message>
    <message>
        <source>Amount</source>
        <translation>元素量</translation>
    </message>
    <message>
        <source>Amount dMut</source>
        <translation>元素量 Δμt</translation>
    </message>
    <message>
        <source>Amouont</source>
        <translation>元素量</translation>
    </message>
    <message>
        <source>Auto</source>
        <translation>自動</translation>
    </message>
    <message>
        <source>B.G.Line Type: </source>
        <extracomment>Type of the background in the non-equivalent method, not a background line of a spectrum.</extracomment>
        <translation>バックグラウンドの形: </translation>
    </message>
    <message>
        <source>Boxes</source>
        <extracomment>Number of bins of a histogram.</extracomment>
        <translation>区間数</translation>
    </message>
    <message>
        <source>C1</source>
        <translation></translation>
    </message>
    <message>
        <source>C2</source>
        <translation></translation>
    </message>
    <message>
        <source>Calc.</source>
        <translation>計算</translation>
    </message>
    <message>
        <source>Calc. Type for t, mu0, and k: </source>
        <translation>t, μ0, k の求め方: </translation>
    </message>
    <message>
        <source>Can&apos;t open the file [%1]</source>
        <translation>ファイル [%1] を開けません</translation>
    </message>
    <message>
        <source>Data Map</source>
        <translation>測定マップ</translation>
    </message>
    <message>
        <source>Data Processing</source>
        <translation>データ処理</translation>
    </message>
    <message>
        <source>Disp Select : </source>
        <translation>表示選択 : </translation>
    </message>
    <message>
        <source>Disp. Only</source>
        <translation>表示のみ</translation>
    </message>
    <message>
        <source>Edge[eV]</source>
        <translation>吸収端[eV]</translation>
    </message>
    <message>
        <source>Energy Range is not selected, which should by selected by CB of TR.</source>
        <extracomment>The check boxes are in the column &quot;LCF F.P.&quot;.</extracomment>
        <translation>エネルギー範囲が選択されていません。「LCF 範囲」の列のチェックボックスで選択してください。</translation>
    </message>
    <message>
        <source>Eng.</source>
        <translation>エネルギー</translation>
    </message>
    <message>
        <source>Eng.[eV]</source>
        <translation>エネルギー [eV]</translation>
    </message>
    <message>
        <source>Equiv.</source>
        <extracomment>Second line of a column heading. In this column the user marks the V point, a row on the rising edge.</extracomment>
        <translation>点</translation>
    </message>
    <message>
        <source>Exact 4 points</source>
        <translation>4点厳密解</translation>
    </message>
    <message>
        <source>Exec. and Results</source>
        <translation>計算と結果</translation>
    </message>
    <message>
        <source>F.P.</source>
        <extracomment>Second line of a column heading. The rows marked in this column limit the range of the linear combination fit.</extracomment>
        <translation>範囲</translation>
    </message>
    <message>
        <source>From</source>
        <translation>下限</translation>
    </message>
    <message>
        <source>Full Range</source>
        <translation>全範囲</translation>
    </message>
    <message>
        <source>Hist Grams</source>
        <translation>ヒストグラム</translation>
    </message>
    <message>
        <source>LCF</source>
        <translation></translation>
    </message>
    <message>
        <source>Least Square</source>
        <translation>最小二乗</translation>
    </message>
    <message>
        <source>Linear</source>
        <translation>直線</translation>
    </message>
    <message>
        <source>M2</source>
        <translation></translation>
    </message>
    <message>
        <source>M3</source>
        <translation></translation>
    </message>
    <message>
        <source>Map</source>
        <extracomment>Second line of the column heading &quot;Show Map&quot;. Japanese needs the opposite word order.</extracomment>
        <translation>表示</translation>
    </message>
    <message>
        <source>Map Select</source>
        <translation>マップ選択</translation>
    </message>
    <message>
        <source>More Conds</source>
        <translation>詳細条件</translation>
    </message>
    <message>
        <source>No normalize</source>
        <translation>規格化なし</translation>
    </message>
    <message>
        <source>No.</source>
        <translation></translation>
    </message>
    <message>
        <source>Non</source>
        <extracomment>First line of the heading of the V point column. The second lines of this heading and of the next one are side by side; they must not read as one word.</extracomment>
        <translation>V</translation>
    </message>
    <message>
        <source>Non Equiv. Meth.</source>
        <translation>非等価法</translation>
    </message>
    <message>
        <source>Normalized by 2 Vics </source>
        <translation>Victoreen 2線で規格化 </translation>
    </message>
    <message>
        <source>Normalized by edge jump</source>
        <translation>エッジジャンプで規格化</translation>
    </message>
    <message>
        <source>Num.</source>
        <extracomment>y axis of a histogram: number of pixels.</extracomment>
        <translation>画素数</translation>
    </message>
    <message>
        <source>Number of Valid Reference files is %1, which is less than 2</source>
        <translation>有効な参照試料のファイルは %1 個です。2 個以上が必要です</translation>
    </message>
    <message>
        <source>Number of selected data sets %1 is less than %2.</source>
        <translation>選択されたデータは %1 組です。%2 組以上が必要です。</translation>
    </message>
    <message>
        <source>Number of selected data sets %1 is not %2.</source>
        <translation>選択されたデータは %1 組です。%2 組が必要です。</translation>
    </message>
    <message>
        <source>Number of valied Ref Files is %1, which is less than 2.</source>
        <translation>有効な参照試料のファイルは %1 個です。2 個以上が必要です。</translation>
    </message>
    <message>
        <source>Params for Vic. Lines</source>
        <translation>Victoreen 線の条件</translation>
    </message>
    <message>
        <source>Post E. Line</source>
        <translation>ポストエッジ線</translation>
    </message>
    <message>
        <source>Post Edge Start [eV]</source>
        <translation>ポストエッジ始点 [eV]</translation>
    </message>
    <message>
        <source>Pre E. Line</source>
        <translation>プリエッジ線</translation>
    </message>
    <message>
        <source>Pre Edge End [eV]</source>
        <translation>プリエッジ終点 [eV]</translation>
    </message>
    <message>
        <source>Ratio 1</source>
        <translation>比率 1</translation>
    </message>
    <message>
        <source>Ratio 2</source>
        <translation>比率 2</translation>
    </message>
    <message>
        <source>Ratio 3</source>
        <translation>比率 3</translation>
    </message>
    <message>
        <source>Ratio 4</source>
        <translation>比率 4</translation>
    </message>
    <message>
        <source>Ratio2</source>
        <translation>比率 2</translation>
    </message>
    <message>
        <source>Rattio 1</source>
        <extracomment>No source uses this text any more; it stays in the table.</extracomment>
        <translation>比率 1</translation>
    </message>
    <message>
        <source>Record Select :</source>
        <extracomment>Title of the quantities that can be written to the result file.</extracomment>
        <translation>記録選択 :</translation>
    </message>
    <message>
        <source>Ref %1</source>
        <translation>参照 %1</translation>
    </message>
    <message>
        <source>Ref File %1 is not valid.</source>
        <translation>参照試料のファイル %1 は無効です。</translation>
    </message>
    <message>
        <source>Ref.1</source>
        <translation>参照1</translation>
    </message>
    <message>
        <source>Ref.2</source>
        <translation>参照2</translation>
    </message>
    <message>
        <source>Ref.3</source>
        <translation>参照3</translation>
    </message>
    <message>
        <source>Ref.4</source>
        <translation>参照4</translation>
    </message>
    <message>
        <source>Refs/Target XAFS Spectra</source>
        <translation>参照・対象の XAFS スペクトル</translation>
    </message>
    <message>
        <source>Refs: Sub.</source>
        <extracomment>Which of the two background lines is subtracted from the references.</extracomment>
        <translation>参照: 差し引く線</translation>
    </message>
    <message>
        <source>Remove</source>
        <extracomment>On a button that is 50 pixels wide.</extracomment>
        <translation>削除</translation>
    </message>
    <message>
        <source>Result Map</source>
        <translation>結果マップ</translation>
    </message>
    <message>
        <source>Result of LCF :: </source>
        <translation>線形結合フィットの結果 :: </translation>
    </message>
    <message>
        <source>Result of NEQ :: </source>
        <translation>非等価法の結果 :: </translation>
    </message>
    <message>
        <source>Select 2D Map Data</source>
        <translation>2次元マップデータの選択</translation>
    </message>
    <message>
        <source>Show</source>
        <extracomment>First line of the column heading &quot;Show Map&quot;. Japanese needs the opposite word order.</extracomment>
        <translation>マップ</translation>
    </message>
    <message>
        <source>Show Data Map</source>
        <translation>測定マップを表示</translation>
    </message>
    <message>
        <source>Show Graphs</source>
        <translation>グラフを表示</translation>
    </message>
    <message>
        <source>Show Res. Map</source>
        <translation>結果マップを表示</translation>
    </message>
    <message>
        <source>Sub pre Vic.</source>
        <extracomment>Normalisation of the spectra in the graph: minus the pre-edge line.</extracomment>
        <translation>プリエッジ線を差引</translation>
    </message>
    <message>
        <source>Target</source>
        <translation>対象</translation>
    </message>
    <message>
        <source>Target File1 is not valid.</source>
        <translation>対象試料のファイルは無効です。</translation>
    </message>
    <message>
        <source>Target: Sub.</source>
        <extracomment>Which of the two background lines is subtracted from the target.</extracomment>
        <translation>対象: 差し引く線</translation>
    </message>
    <message>
        <source>The 1st Ref File is not valid.</source>
        <translation>1 番目の参照試料のファイルは無効です。</translation>
    </message>
    <message>
        <source>The 2nd Ref File is not valid.</source>
        <translation>2 番目の参照試料のファイルは無効です。</translation>
    </message>
    <message>
        <source>Thick.</source>
        <extracomment>Axis title: thickness or amount, in units of the references&apos; edge jump.</extracomment>
        <translation>元素量</translation>
    </message>
    <message>
        <source>To</source>
        <translation>上限</translation>
    </message>
    <message>
        <source>Use</source>
        <translation>使用</translation>
    </message>
    <message>
        <source>V Point is not selected</source>
        <translation>V点が選択されていません</translation>
    </message>
    <message>
        <source>V Point is not selected.</source>
        <translation>V点が選択されていません。</translation>
    </message>
    <message>
        <source>Valence</source>
        <translation>価数</translation>
    </message>
    <message>
        <source>Vic.</source>
        <translation>Victoreen</translation>
    </message>
    <message>
        <source>When drawing all mut</source>
        <translation>全 μt の表示方法</translation>
    </message>
    <message>
        <source>Write</source>
        <translation>書き出し</translation>
    </message>
    <message>
        <source>XAFS spectra</source>
        <translation>XAFS スペクトル</translation>
    </message>
    <message>
        <source>[eV]</source>
        <translation></translation>
    </message>
    <message>
        <source>a = %1, Valence = %2, t/ts = %3</source>
        <translation>a = %1, 価数 = %2, t/ts = %3</translation>
    </message>
    <message>
        <source>dMut</source>
        <translation>Δμt</translation>
    </message>
    <message>
        <source>dMut 1</source>
        <translation>Δμt 1</translation>
    </message>
    <message>
        <source>dMut 2</source>
        <translation>Δμt 2</translation>
    </message>
    <message>
        <source>dMut 3</source>
        <translation>Δμt 3</translation>
    </message>
    <message>
        <source>dMut 4</source>
        <translation>Δμt 4</translation>
    </message>
    <message>
        <source>mu0</source>
        <translation>μ0</translation>
    </message>
    <message>
        <source>mut</source>
        <translation>μt</translation>
    </message>
    <message>
        <source>mut0</source>
        <translation>μt0</translation>
    </message>
</context>
<context>
    <name>Displays</name>
    <message>
        <source>Frame</source>
        <extracomment>Title of the graph window.</extracomment>
        <translation>グラフ</translation>
    </message>
    <message>
        <source>Ref1</source>
        <translation>参照1</translation>
    </message>
    <message>
        <source>Ref2</source>
        <translation>参照2</translation>
    </message>
    <message>
        <source>Ref3</source>
        <translation>参照3</translation>
    </message>
    <message>
        <source>Ref4</source>
        <translation>参照4</translation>
    </message>
    <message>
        <source>Target</source>
        <translation>対象</translation>
    </message>
    <message>
        <source>Muts</source>
        <translation>全 μt</translation>
    </message>
    <message>
        <source>LCF vs 4PS</source>
        <extracomment>No source uses this text: the graph window uses &quot;LCF vs MPS&quot;, which is not translated.</extracomment>
        <translation>LCF 対 4点法</translation>
    </message>
    <message>
        <source>Histgram of a</source>
        <translation>価数の分布</translation>
    </message>
    <message>
        <source>Histgram of dMut</source>
        <translation>Δμt の分布</translation>
    </message>
    <message>
        <source>dMut/v or a</source>
        <translation>Δμt 対 価数</translation>
    </message>
    <message>
        <source>M2/M3</source>
        <translation></translation>
    </message>
</context>
<context>
    <name>AEPoint</name>
    <message>
        <source>Frame</source>
        <translation></translation>
    </message>
    <message>
        <source>No. </source>
        <translation></translation>
    </message>
    <message>
        <source>  Energy(eV)</source>
        <translation>  エネルギー(eV)</translation>
    </message>
    <message>
        <source>  mut(Ref 1)</source>
        <translation>  μt(参照 1)</translation>
    </message>
    <message>
        <source>  mut(Ref 2)</source>
        <translation>  μt(参照 2)</translation>
    </message>
    <message>
        <source>mut(Ref 3)</source>
        <translation>μt(参照 3)</translation>
    </message>
    <message>
        <source>mut(Ref 4)</source>
        <translation>μt(参照 4)</translation>
    </message>
    <message>
        <source>  mut(Target)</source>
        <translation>  μt(対象)</translation>
    </message>
    <message>
        <source>   2D </source>
        <translation>   2次元 </translation>
    </message>
</context>
<context>
    <name>ARefFile</name>
    <message>
        <source>Frame</source>
        <translation></translation>
    </message>
    <message>
        <source>Ref 1</source>
        <translation>参照 1</translation>
    </message>
    <message>
        <source>Use</source>
        <translation>使用</translation>
    </message>
    <message>
        <source>Valence</source>
        <translation>価数</translation>
    </message>
    <message>
        <source>1</source>
        <translation></translation>
    </message>
    <message>
        <source>Ratio</source>
        <translation>比率</translation>
    </message>
    <message>
        <source>dMut</source>
        <translation>Δμt</translation>
    </message>
</context>
<context>
    <name>DispABase</name>
    <message>
        <source>Frame</source>
        <translation></translation>
    </message>
    <message>
        <source>TextLabel</source>
        <translation></translation>
    </message>
    <message>
        <source> x:</source>
        <translation></translation>
    </message>
    <message>
        <source>x-title</source>
        <translation></translation>
    </message>
    <message>
        <source>y:</source>
        <translation></translation>
    </message>
    <message>
        <source>y-title</source>
        <translation></translation>
    </message>
    <message>
        <source>P/D</source>
        <translation></translation>
    </message>
</context>
<context>
    <name>AFileSelect</name>
    <message>
        <source>Frame</source>
        <translation></translation>
    </message>
    <message>
        <source>File</source>
        <translation>ファイル</translation>
    </message>
    <message>
        <source>Sel.</source>
        <extracomment>On a button that is 50 pixels wide.</extracomment>
        <translation>選択</translation>
    </message>
    <message>
        <source>Clear</source>
        <extracomment>On a button that is 50 pixels wide.</extracomment>
        <translation>消去</translation>
    </message>
    <message>
        <source>dE[eV]</source>
        <translation></translation>
    </message>
    <message>
        <source>0</source>
        <translation></translation>
    </message>
</context>
<context>
    <name>DispMBase</name>
    <message>
        <source>Frame</source>
        <translation></translation>
    </message>
    <message>
        <source>TextLabel</source>
        <translation></translation>
    </message>
    <message>
        <source>  x:</source>
        <translation></translation>
    </message>
    <message>
        <source>  y:</source>
        <translation></translation>
    </message>
    <message>
        <source>  Val:</source>
        <translation>  値:</translation>
    </message>
    <message>
        <source>P/D</source>
        <translation></translation>
    </message>
</context>
<context>
    <name>AXafsFileSelect</name>
    <message>
        <source>Frame</source>
        <extracomment>Window title in the form of this class.</extracomment>
        <translation></translation>
    </message>
    <message>
        <source>Eng.[eV]</source>
        <translation>エネルギー [eV]</translation>
    </message>
    <message>
        <source>mut</source>
        <translation>μt</translation>
    </message>
    <message>
        <source>Edge Jump : %1</source>
        <extracomment>In a small box above a plot. The font size is fitted to the box, so a shorter text is larger.</extracomment>
        <translation>ジャンプ : %1</translation>
    </message>
</context>
<context>
    <name>Body</name>
    <message>
        <source>MainWindow</source>
        <extracomment>Never shown: the program replaces this title by its name.</extracomment>
        <translation>メインウィンドウ</translation>
    </message>
</context>
<context>
    <name>DispArea</name>
    <message>
        <source>Frame</source>
        <translation></translation>
    </message>
</context>
<context>
    <name>PopBase</name>
    <message>
        <source>Frame</source>
        <translation></translation>
    </message>
</context>
<context>
    <name>cBar</name>
    <message>
        <source>Frame</source>
        <translation></translation>
    </message>
</context>
</TS>
