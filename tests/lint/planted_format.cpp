int  Planted( int a ){return a ;}
